# The short version lives in project(); the build number is the commit count, so every
# build from a different commit says so in --version and, later, in the about box.
find_package(Git QUIET)
set(VANTREL_BUILD_VERSION "0")
if(GIT_FOUND)
    execute_process(
        COMMAND ${GIT_EXECUTABLE} rev-list --count HEAD
        WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
        OUTPUT_VARIABLE _count
        OUTPUT_STRIP_TRAILING_WHITESPACE
        RESULT_VARIABLE _result
        ERROR_QUIET)
    if(_result EQUAL 0 AND _count)
        set(VANTREL_BUILD_VERSION "${_count}")
    endif()
endif()
set(VANTREL_SHORT_VERSION "${PROJECT_VERSION}")
configure_file(${CMAKE_SOURCE_DIR}/cmake/Version.h.in ${CMAKE_BINARY_DIR}/generated/Version.h @ONLY)
add_library(vantrel_version INTERFACE)
target_include_directories(vantrel_version INTERFACE ${CMAKE_BINARY_DIR}/generated)
add_library(Vantrel::version ALIAS vantrel_version)
