# The default girder on fork supports under end moments of 1000: the
# eigenvalue times 1000 is the critical moment, which must lie within 2 % of
# the classical lateral-torsional buckling moment
#   Mcr = (pi / L) sqrt(E Iy G J (1 + pi^2 E Cw / (G J L^2)))
# of the section (flanges 12 x 0.5, web 16 x 0.5, L 120, E 29000, nu 0.3):
#   G  = E / (2 (1 + nu))                  = 11153.85
#   Iy = 2 (0.5 x 12^3 / 12) + 16 x 0.5^3 / 12 = 144.1667
#   J  = (2 x 12 x 0.5^3 + 16 x 0.5^3) / 3    = 1.666667
#   Cw = Iy h^2 / 4, h = 16.5 between flange centroids = 9812.344
#   Mcr = 24741.4, so the eigenvalue lies in [24.2465, 25.2362].
#   -DBATCH=velk-batch -DWORK=folder
set(file ${WORK}/fork-moment.inp)
execute_process(COMMAND ${BATCH} generate --supports fork --moment 1000 -o ${file}
                RESULT_VARIABLE rc ERROR_VARIABLE err)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "generate failed with ${rc}:\n${err}")
endif()
execute_process(COMMAND ${BATCH} run ${file}
                OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE rc)
if(NOT rc EQUAL 0 OR NOT out MATCHES "^Eigenvalue of ([0-9]\\.[0-9]+E[-+][0-9]+)\n$")
  message(FATAL_ERROR "run exit ${rc}:\n${out}${err}")
endif()
set(value ${CMAKE_MATCH_1})
if(value LESS 24.2465 OR value GREATER 25.2362)
  message(FATAL_ERROR "critical moment ${value} x 1000, expected 24741 within 2 %")
endif()
message(STATUS "critical moment ${value} x 1000 against 24741.4")
