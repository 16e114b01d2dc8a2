# Installs the build BINARY_DIR below WORK_DIR, builds the consumer against that, and runs a card through it.
# cmake -DBINARY_DIR=… -DWORK_DIR=… -DCONFIG=… -DUSE_PKG_CONFIG=… -DCXX=… -DCXX_FLAGS=… -DPICTURE=… -P RunConsumer.cmake

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  message("${output}")
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "Failed (${status}): ${ARGN}")
  endif()
endfunction()

set(prefix "${WORK_DIR}/prefix")
file(REMOVE_RECURSE "${WORK_DIR}")
run("${CMAKE_COMMAND}" --install "${BINARY_DIR}" --prefix "${prefix}")

# What is installed must do on its own: nothing of it may lead back to the build.
file(GLOB_RECURSE packages "${prefix}/*.cmake" "${prefix}/*.pc")
foreach(package IN LISTS packages)
  file(READ "${package}" text)
  string(FIND "${text}" "${BINARY_DIR}" found)
  if(NOT found EQUAL -1)
    message(FATAL_ERROR "${package} names the build folder")
  endif()
endforeach()

file(GLOB_RECURSE pc "${prefix}/QVCardScan.pc")
get_filename_component(pc_folder "${pc}" DIRECTORY)
get_filename_component(libraries "${pc_folder}" DIRECTORY)
set(ENV{PKG_CONFIG_PATH} "${pc_folder}")
set(ENV{LD_LIBRARY_PATH} "${libraries}")
run("${CMAKE_COMMAND}" -S "${CMAKE_CURRENT_LIST_DIR}" -B "${WORK_DIR}/build" "-DCMAKE_PREFIX_PATH=${prefix}"
    "-DCMAKE_BUILD_TYPE=${CONFIG}" "-DCMAKE_CXX_COMPILER=${CXX}" "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}"
    "-DUSE_PKG_CONFIG=${USE_PKG_CONFIG}")
run("${CMAKE_COMMAND}" --build "${WORK_DIR}/build")
run("${WORK_DIR}/build/consumer" "${PICTURE}")
