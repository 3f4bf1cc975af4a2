# SPDX-License-Identifier: MIT
# What every target of PixelWeft has in common, and the functions that make them.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# The oldest Qt of each generation that the sources are written for; no call that it takes for outdated compiles.
if(PIXELWEFT_QT EQUAL 5)
    set(PIXELWEFT_QT_LEAST 5.15)
    add_compile_definitions(QT_DISABLE_DEPRECATED_BEFORE=0x050F00)
elseif(PIXELWEFT_QT EQUAL 6)
    set(PIXELWEFT_QT_LEAST 6.4)
    add_compile_definitions(QT_DISABLE_DEPRECATED_BEFORE=0x060400)
else()
    message(FATAL_ERROR "PIXELWEFT_QT is 5 or 6, not '${PIXELWEFT_QT}'")
endif()

# ccache speeds up the second build of anything and slows down the first; with precompiled headers it needs these options.
find_program(PIXELWEFT_CCACHE ccache)
if(PIXELWEFT_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_DEPEND=1
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        ${PIXELWEFT_CCACHE})
endif()

add_library(PixelWeftOptions INTERFACE)
target_compile_options(PixelWeftOptions INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
    # The sampled bytes must be the same on every machine: no fused multiply-add.
    -ffp-contract=off
    # Log lines carry the base name of their source, not the path of the builder's machine.
    -ffile-prefix-map=${CMAKE_SOURCE_DIR}/=)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(PixelWeftOptions INTERFACE -fpch-preprocess)
    if(CMAKE_UNITY_BUILD) # It takes the unnamed namespace of an included source for that of a header.
        target_compile_options(PixelWeftOptions INTERFACE -Wno-subobject-linkage)
    endif()
endif()
# Boost 1.74 with C++20: Asio's own coroutine header needs <utility>, and we use none of it.
target_compile_definitions(PixelWeftOptions INTERFACE BOOST_ASIO_DISABLE_CO_AWAIT)

if(NOT PIXELWEFT_SANITIZE)
    # What comes from a network must find no table of functions that it could write to.
    add_link_options(-Wl,-z,relro,-z,now)
else()
    add_compile_options(-fsanitize=${PIXELWEFT_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${PIXELWEFT_SANITIZE})
    if(PIXELWEFT_SANITIZE MATCHES "thread")
        # ThreadSanitizer knows no fences. Asio's own only back up its locks, which it does know.
        add_compile_definitions(BOOST_ASIO_DISABLE_FENCED_BLOCK)
    endif()
    if(PIXELWEFT_SANITIZE MATCHES "undefined")
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
endif()

# The rooms of this build and what each one links, one room a line: `Name folder|public|private`.
# Tools/Rooms reads it.
set(PIXELWEFT_ROOMS ${CMAKE_BINARY_DIR}/rooms.txt)
file(WRITE ${PIXELWEFT_ROOMS} "")

# pixelweft_room(Name [PUBLIC ...] [PRIVATE ...])
#   Makes the target Name the room of this folder: links what it uses, and gives those who link it
#   an include path to this room alone. The path holds one link to the folder, so that a header is
#   found by its room (`UI/Editor/FreePatch.h`) where the room is linked, and nowhere else.
function(pixelweft_room name)
    cmake_parse_arguments(arg "" "" "PUBLIC;PRIVATE" ${ARGN})
    target_link_libraries(${name} PUBLIC ${arg_PUBLIC} PRIVATE PixelWeftOptions ${arg_PRIVATE})
    cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR
        BASE_DIRECTORY ${CMAKE_SOURCE_DIR}/Sources OUTPUT_VARIABLE folder)
    set(headers ${CMAKE_BINARY_DIR}/rooms/${name})
    cmake_path(GET folder PARENT_PATH parent)
    file(MAKE_DIRECTORY ${headers}/${parent})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${headers}/${folder} SYMBOLIC)
    target_include_directories(${name} PUBLIC ${headers})
    file(APPEND ${PIXELWEFT_ROOMS} "${name} ${folder}|${arg_PUBLIC}|${arg_PRIVATE}\n")
endfunction()

# pixelweft_library(Name [QT] SOURCES ... [MOC ...] [PUBLIC ...] [PRIVATE ...])
#   One folder under Sources/ is one static library. MOC are its headers with Q_OBJECT, PUBLIC the
#   rooms that its headers show, PRIVATE what only its sources use; each room that it includes is
#   named in one of the two. QT turns on the Qt precompiled header.
function(pixelweft_library name)
    cmake_parse_arguments(arg "QT" "" "SOURCES;MOC;PUBLIC;PRIVATE" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES})
    pixelweft_room(${name} PUBLIC ${arg_PUBLIC} PRIVATE ${arg_PRIVATE})
    if(arg_MOC)
        pixelweft_moc(${name} ${arg_MOC})
    endif()
    if(arg_QT)
        target_compile_definitions(${name} PUBLIC QT_NO_CAST_FROM_ASCII QT_NO_FOREACH)
        pixelweft_precompile_qt(${name})
    endif()
endfunction()

# Qt's headers cost most of the compile time of a source that uses them: they are read once for all targets.
function(pixelweft_precompile_qt name)
    if(CMAKE_DISABLE_PRECOMPILE_HEADERS)
        return()
    endif()
    target_precompile_headers(${name} REUSE_FROM QtHeaders)
    target_compile_options(${name} PRIVATE -Winvalid-pch)
endfunction()

# The headers with Q_OBJECT by name: what moc makes of them is compiled with the sources and costs next to nothing, where
# AUTOMOC would make one more compilation, and a search through all sources, for each target.
function(pixelweft_moc name)
    qt_wrap_cpp(sources ${ARGN})
    target_sources(${name} PRIVATE ${sources})
endfunction()

# What ThreadSanitizer has to see: the test programs with the label `threads`. The program has seven kinds of threads:
# log, sockets, saves, unsaved work and saved versions, which are each in one of these, one that writes a patch from a copy
# of its own, and one that reads fixtures to import into results of its own. So the label is not on UIMainTests and
# UILibraryTests, which would need the whole window and exceptions for Qt; on ModelTests, whose one thread is the test's and
# only writes a file; nor on SaveSafetyTests, which starts a process and no thread.
add_custom_target(ThreadTests)

# pixelweft_test_program(Name [QT] SOURCES ... LINK ...)
function(pixelweft_test_program name)
    cmake_parse_arguments(arg "QT" "" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE PixelWeftOptions TestSupport GTest::gtest ${arg_LINK})
    # The rooms that they judge are optimized as ever; they themselves compile a tenth to a third faster so.
    target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O1>)
    if(arg_QT)
        target_compile_definitions(${name} PRIVATE QT_NO_CAST_FROM_ASCII QT_NO_FOREACH)
        pixelweft_precompile_qt(${name})
    endif()
endfunction()

# pixelweft_test(Name [QT] SOURCES ... LINK ... [LABELS ...])
#   One test program, which is one CTest test. The label `threads` is for a program that starts one.
function(pixelweft_test name)
    cmake_parse_arguments(arg "" "" "LABELS" ${ARGN})
    pixelweft_test_program(${name} ${arg_UNPARSED_ARGUMENTS})
    if("threads" IN_LIST arg_LABELS)
        add_dependencies(ThreadTests ${name})
    endif()
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8"
        LABELS "${arg_LABELS}" TIMEOUT 300 SKIP_RETURN_CODE 77)
endfunction()
