# Installs the build into an empty prefix: what an earlier run left must not hide that something is no longer installed.
file(REMOVE_RECURSE ${PREFIX})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX} --config ${CONFIG}
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
