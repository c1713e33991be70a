# The table of OmbrixPlatform/Letters.h, which the build derives from ICU's data.
add_executable(make-letters
    cmake/make-letters.cpp
    OmbrixPlatform/Numbers.cpp
    OmbrixPlatform/Text.cpp
    OmbrixPlatform/Utf8.cpp)
target_include_directories(make-letters PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(make-letters PRIVATE Ombrix::ICU simdjson::simdjson OmbrixWarnings)

set(table ${PROJECT_BINARY_DIR}/generated/OmbrixPlatform/LettersTable.cpp)
add_custom_command(
    OUTPUT ${table}
    COMMAND make-letters ${table}
    DEPENDS make-letters
    COMMENT "Deriving the table of letters"
    VERBATIM)
target_sources(OmbrixPlatform PRIVATE ${table})
