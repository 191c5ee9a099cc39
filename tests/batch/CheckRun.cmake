# Runs one project through `velk-batch run` and checks the eigenvalue it
# reports. EXPECT is the leading digits and the exponent as the program prints
# them ("3.748" and "E-02" as EXPECT=3.748 EXP=E-02): the fifth digit is free.
#   -DBATCH=velk-batch -DFILE=in.inp -DEXPECT=3.748 -DEXP=E-02 [-DARGS=--shear]
execute_process(COMMAND ${BATCH} run ${FILE} ${ARGS}
                OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "run failed with ${rc}:\n${out}${err}")
endif()
if(NOT out MATCHES "Eigenvalue of (-?[0-9]\\.[0-9]+E[-+][0-9]+)\n")
  message(FATAL_ERROR "no eigenvalue in:\n${out}")
endif()
set(value ${CMAKE_MATCH_1})
string(REPLACE "." "\\." digits "${EXPECT}")
string(REPLACE "+" "\\+" exponent "${EXP}")
if(NOT value MATCHES "^${digits}[0-9]*${exponent}$")
  message(FATAL_ERROR "eigenvalue ${value}, expected ${EXPECT}...${EXP}")
endif()
