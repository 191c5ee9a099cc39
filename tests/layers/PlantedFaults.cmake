# The layer check against small trees with one planted fault each: every one
# must fail with its own message, and the clean tree must pass.
function(plant name)
  set(dir "${WORK}/${name}")
  file(REMOVE_RECURSE "${dir}")
  file(WRITE "${dir}/src/common/Text.h" "#pragma once\n")
  file(WRITE "${dir}/src/model/Node.h" "#include \"common/Text.h\"\n")
  file(WRITE "${dir}/src/session/Main.h" "#include \"model/Node.h\"\n")
  file(WRITE "${dir}/src/view/View.h" "#include \"model/Node.h\"\n")
  file(WRITE "${dir}/src/draw/Draw.cpp" "#include <GL/gl.h>\n#include \"view/View.h\"\n")
  file(WRITE "${dir}/src/shell/Window.cpp" "#include <QWidget>\n#include \"draw/Draw.h\"\n")
  foreach(pair ${ARGN})
    string(REPLACE "=" ";" pair "${pair}")
    list(GET pair 0 file)
    list(GET pair 1 text)
    file(APPEND "${dir}/${file}" "${text}\n")
  endforeach()
  execute_process(COMMAND "${CHECK}" "${dir}" RESULT_VARIABLE rc ERROR_VARIABLE err
                  OUTPUT_QUIET)
  set(rc ${rc} PARENT_SCOPE)
  set(err "${err}" PARENT_SCOPE)
endfunction()

function(expect_fault name message)
  plant(${name} ${ARGN})
  if(rc EQUAL 0 OR NOT err MATCHES "${message}")
    message(FATAL_ERROR "${name}: expected '${message}', got ${rc}: ${err}")
  endif()
endfunction()

plant(clean)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "the clean tree fails: ${err}")
endif()
expect_fault(upward "model includes session/Main.h of the lower layer session"
  "src/model/Node.h=#include \"session/Main.h\"")
expect_fault(view_state_draws "view includes draw/Draw.h of the lower layer view-drawing"
  "src/view/View.h=#include \"draw/Draw.h\"")
expect_fault(qt_in_core "toolkit or GL header in the core"
  "src/model/Node.h=#include <QString>")
expect_fault(gl_in_core "toolkit or GL header in the core"
  "src/session/Main.h=#include <GL/glu.h>")
expect_fault(tools_draw "tools includes draw/Draw.h"
  "tools/batch/main.cpp=#include \"draw/Draw.h\"")
expect_fault(cycle "include cycle: (editing -> model|model -> editing)"
  "src/editing/Pick.h=#include \"model/Node.h\""
  "src/model/Node.h=#include \"editing/Pick.h\"")
