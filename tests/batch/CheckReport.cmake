# Runs a project, then writes its report or grid from the saved result, and
# checks the file for a line that the run's result must give.
#   -DBATCH=velk-batch -DIN=in.inp -DWORK=folder -DCMD=report|grid -DEXPECT=regex
set(done ${WORK}/${CMD}-run.inp)
set(out ${WORK}/${CMD}.out)
file(REMOVE ${out})
execute_process(COMMAND ${BATCH} run ${IN} -o ${done} RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "run failed with ${rc}")
endif()
execute_process(COMMAND ${BATCH} ${CMD} ${done} -o ${out}
                OUTPUT_VARIABLE stdout ERROR_VARIABLE stderr RESULT_VARIABLE rc)
if(NOT rc EQUAL 0 OR NOT stdout STREQUAL "" OR NOT stderr STREQUAL "")
  message(FATAL_ERROR "${CMD} exit ${rc}\n--- stdout\n${stdout}--- stderr\n${stderr}")
endif()
file(READ ${out} text)
if(NOT text MATCHES "${EXPECT}")
  message(FATAL_ERROR "${CMD} file lacks '${EXPECT}':\n${text}")
endif()
