# Runs velk-batch and checks its exit status and what went to each stream.
#   -DBATCH=velk-batch "-DARGS=run;in.inp;-o;out.inp" -DRC=1
#   -DOUT=regex for the whole of stdout -DERR=regex for the whole of stderr
execute_process(COMMAND ${BATCH} ${ARGS}
                OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE rc)
set(report "exit ${rc}\n--- stdout\n${out}--- stderr\n${err}")
if(NOT rc EQUAL RC)
  message(FATAL_ERROR "expected exit ${RC}:\n${report}")
endif()
if(NOT out MATCHES "^${OUT}$")
  message(FATAL_ERROR "stdout is not '${OUT}':\n${report}")
endif()
if(NOT err MATCHES "^${ERR}$")
  message(FATAL_ERROR "stderr is not '${ERR}':\n${report}")
endif()
