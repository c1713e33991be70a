# OmbrixICU, the target to link for Unicode. The tool starts 0.9 ms sooner with ICU's archives than
# with its shared libraries, most of which is relocation of tables that no command reads; the price is
# 30 MB of Unicode data in the file, of which only the pages in use are ever loaded. Sanitizer and
# fuzz builds, whose start-up does not matter, link the shared ones.
find_package(ICU 72 REQUIRED COMPONENTS uc i18n data)
add_library(OmbrixICU INTERFACE)
set(archives)
foreach(component i18n uc data)
    cmake_path(GET ICU_UC_LIBRARIES PARENT_PATH folder)
    find_library(OMBRIX_ICU_${component} libicu${component}.a HINTS ${folder})
    list(APPEND archives ${OMBRIX_ICU_${component}})
endforeach()
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT "${archives}" MATCHES "NOTFOUND")
    target_include_directories(OmbrixICU SYSTEM INTERFACE ${ICU_INCLUDE_DIRS})
    target_link_libraries(OmbrixICU INTERFACE ${archives} ${CMAKE_DL_LIBS})
else()
    target_link_libraries(OmbrixICU INTERFACE ICU::i18n ICU::uc)
endif()
