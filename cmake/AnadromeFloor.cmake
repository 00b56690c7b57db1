# The house is built in floors: a folder includes only folders below it. Every floor is one library whose public
# include folder shows its own source folders and nothing else, so that an include that points upwards finds no file.

include(GNUInstallDirs)

add_library(anadrome_options INTERFACE)
target_compile_options(anadrome_options INTERFACE -Wall -Wextra -Wpedantic)
target_compile_definitions(anadrome_options INTERFACE QT_NO_KEYWORDS)
if(ANADROME_WERROR)
    target_compile_options(anadrome_options INTERFACE -Werror)
endif()
if(ANADROME_SANITIZE)
    target_compile_options(anadrome_options INTERFACE -fsanitize=${ANADROME_SANITIZE} -fno-omit-frame-pointer)
    target_link_options(anadrome_options INTERFACE -fsanitize=${ANADROME_SANITIZE})
endif()
if(ANADROME_SANITIZE STREQUAL "thread")
    # Qt's headers end global objects with a fence that this sanitizer doesn't know.
    target_compile_options(anadrome_options INTERFACE -Wno-tsan)
endif()

# anadrome_floor(NAME FOLDERS folder... LINKS target... [PRIVATE_LINKS target...])
# Makes the library NAME out of all .cpp files in the folders, which are named from the top of the repository.
function(anadrome_floor name)
    cmake_parse_arguments(FLOOR "" "" "FOLDERS;LINKS;PRIVATE_LINKS" ${ARGN})
    set(sources)
    set(view ${CMAKE_BINARY_DIR}/include/${name})
    foreach(folder IN LISTS FLOOR_FOLDERS)
        file(GLOB_RECURSE found CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp ${PROJECT_SOURCE_DIR}/${folder}/*.h)
        list(APPEND sources ${found})
        get_filename_component(parent ${view}/${folder} DIRECTORY)
        file(MAKE_DIRECTORY ${parent})
        file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${folder} ${view}/${folder} SYMBOLIC)
    endforeach()
    add_library(${name} STATIC ${sources})
    target_compile_features(${name} PUBLIC cxx_std_20)
    target_include_directories(${name} PUBLIC
        $<BUILD_INTERFACE:${view}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/anadrome>)
    target_link_libraries(${name} PUBLIC ${FLOOR_LINKS}
        PRIVATE $<BUILD_INTERFACE:anadrome_options> ${FLOOR_PRIVATE_LINKS})
    set_target_properties(${name} PROPERTIES ANADROME_FOLDERS "${FLOOR_FOLDERS}")
endfunction()
