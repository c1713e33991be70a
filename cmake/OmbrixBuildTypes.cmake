# Build types:
#   Release   what people run (the default)
#   Sanitize  for running the tests: AddressSanitizer and UndefinedBehaviorSanitizer
#   Fuzz      the fuzz targets, with libFuzzer and the same sanitizers (clang++ only);
#             OMBRIX_QUICK_FUZZ leaves the sanitizers out: about three times the inputs, laws alone
if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Release, Sanitize or Fuzz" FORCE)
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")
set(sanitizers "-fsanitize=address,undefined -fno-sanitize-recover=all")
set(CMAKE_CXX_FLAGS_SANITIZE "-O1 -g1 -fno-omit-frame-pointer ${sanitizers}")
set(CMAKE_EXE_LINKER_FLAGS_SANITIZE "${sanitizers}")
set(CMAKE_CXX_FLAGS_FUZZ "-O1 -g1 -fno-omit-frame-pointer ${sanitizers} -fsanitize=fuzzer-no-link")
set(CMAKE_EXE_LINKER_FLAGS_FUZZ "${sanitizers}")
if(OMBRIX_QUICK_FUZZ)
    set(CMAKE_CXX_FLAGS_FUZZ "-O2 -g1 -fno-omit-frame-pointer -fsanitize=fuzzer-no-link")
    set(CMAKE_EXE_LINKER_FLAGS_FUZZ "")
endif()

# No warning for missing field initialisers: records are built with designated initialisers, which
# may leave members at their defaults, and g++ 12 cannot tell that from a forgotten member.
#
# Woven-in checks hide from g++ 12 which member of an optional is set, and it warns of texts that are
# never read: these warnings are shown in the Sanitize build and are errors only in the others.
add_library(OmbrixWarnings INTERFACE)
target_compile_options(OmbrixWarnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Wold-style-cast
    -Woverloaded-virtual -Wno-missing-field-initializers -Werror
    $<$<CONFIG:Sanitize>:-Wno-error=maybe-uninitialized>)
