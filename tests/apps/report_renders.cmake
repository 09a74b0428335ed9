# Renders a study's report.html in headless Chromium and checks that a real page came out:
# a PNG of the full window with more in it than a blank page compresses to.
# Usage: cmake -DTOOL=<brindle-study> -DWORK=<scratch folder> -P report_renders.cmake
find_program(CHROMIUM NAMES chromium chromium-browser)
if(NOT CHROMIUM)
  message(FATAL_ERROR "chromium is not installed (tools/install-deps.sh installs it)")
endif()
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
execute_process(COMMAND "${TOOL}" --output "${WORK}/study" --only 3d --refine3d 0 --no-convergence
                RESULT_VARIABLE status OUTPUT_QUIET)
if(NOT status EQUAL 0 OR NOT EXISTS "${WORK}/study/report.html")
  message(FATAL_ERROR "brindle-study did not write report.html (exit ${status})")
endif()
execute_process(
  COMMAND "${CHROMIUM}" --headless --no-sandbox --disable-gpu --disable-quic --no-first-run
          --disable-background-networking --disable-component-update --disable-sync
          --user-data-dir=${WORK}/profile --screenshot=${WORK}/report.png --window-size=1200,2000
          "file://${WORK}/study/report.html"
  RESULT_VARIABLE status OUTPUT_QUIET ERROR_QUIET TIMEOUT 90)
if(NOT EXISTS "${WORK}/report.png")
  message(FATAL_ERROR "chromium wrote no screenshot (exit ${status})")
endif()
file(READ "${WORK}/report.png" signature LIMIT 8 HEX)
file(SIZE "${WORK}/report.png" size)
if(NOT signature STREQUAL "89504e470d0a1a0a")
  message(FATAL_ERROR "report.png is not a PNG image")
endif()
# A blank 1200 x 2000 page is a few kilobytes; tables and coloured pictures make far more.
if(size LESS 40000)
  message(FATAL_ERROR "report.png has only ${size} bytes: the page did not render")
endif()
message(STATUS "report.html rendered: ${size} bytes of PNG")
