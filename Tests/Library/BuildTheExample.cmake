# Installs the library into a folder of its own, builds the example against it and reverses a made clip.
cmake_minimum_required(VERSION 3.25)
set(folder ${BUILD}/Tests/Library)
file(REMOVE_RECURSE ${folder})

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --component library --prefix ${folder}/prefix)
run(${CMAKE_COMMAND} -S ${SOURCE}/docs/example -B ${folder}/example -G Ninja -D CMAKE_PREFIX_PATH=${folder}/prefix
    -D "CMAKE_CXX_FLAGS=${FLAGS} -Wall -Wextra")
run(${CMAKE_COMMAND} --build ${folder}/example)
run(${CLIP_MAKER} ${folder}/clip.mp4 --size 64x48 --rate 30 --seconds 1)
run(${folder}/example/reverse ${folder}/clip.mp4 ${folder}/movie.mov)
execute_process(COMMAND ffprobe -v error -select_streams v -count_frames -show_entries
    stream=codec_name,nb_read_frames -of csv=p=0 ${folder}/movie.mov OUTPUT_VARIABLE video COMMAND_ERROR_IS_FATAL ANY)
string(STRIP "${video}" video)
if(NOT video STREQUAL "hevc,30")
    message(FATAL_ERROR "The movie has ${video} instead of 30 HEVC frames")
endif()
