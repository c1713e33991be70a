# Ombrix::ICU, the target to link for Unicode. Release builds link ICU's static archives: the tool
# then starts 0.9 ms sooner than with the shared libraries, which spend most of that time relocating
# tables that no command reads. In return the executable carries 30 MB of Unicode data, of which
# only the pages in use are loaded. Sanitizer and fuzz builds link the shared libraries, as does a
# Release build on a machine that lacks the archives.
find_package(ICU 72 REQUIRED COMPONENTS uc i18n data)
add_library(Ombrix::ICU INTERFACE IMPORTED)
set(archives)
foreach(component i18n uc data)
    cmake_path(GET ICU_UC_LIBRARIES PARENT_PATH folder)
    find_library(OMBRIX_ICU_${component} libicu${component}.a HINTS ${folder})
    list(APPEND archives ${OMBRIX_ICU_${component}})
endforeach()
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT "${archives}" MATCHES "NOTFOUND")
    target_include_directories(Ombrix::ICU SYSTEM INTERFACE ${ICU_INCLUDE_DIRS})
    target_link_libraries(Ombrix::ICU INTERFACE ${archives} ${CMAKE_DL_LIBS})
else()
    target_link_libraries(Ombrix::ICU INTERFACE ICU::i18n ICU::uc)
endif()
