# Bundles the modules of the report, puts all its parts into one page, and the page into a C++
# source as bytes.
# usage: cmake -DNODE=... -DSOURCE=host/report/page -DPACKAGES=node_modules -DOUTPUT=ReportPage.cpp
#   -P EmbedPage.cmake
function(insert marker)
  set(content "")
  foreach(path IN LISTS ARGN)
    file(READ "${path}" part)
    string(APPEND content "${part}")
  endforeach()
  string(REPLACE "@${marker}@" "${content}" page "${page}")
  set(page "${page}" PARENT_SCOPE)
endfunction()

# The license of the plot library stands in the head of the page.
set(bundle "${OUTPUT}.js")
execute_process(
  COMMAND ${CMAKE_COMMAND} -E env "NODE_PATH=${PACKAGES}"
    "${NODE}" "${PACKAGES}/esbuild/bin/esbuild" "${SOURCE}/report.js" --bundle --format=iife
    --target=es2020 --charset=utf8 --minify --legal-comments=none --log-level=warning
    "--outfile=${bundle}"
  RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "The modules of the report can't be bundled.")
endif()

file(READ "${SOURCE}/report.html" page)
insert(UPLOT_LICENSE "${PACKAGES}/uplot/LICENSE")
insert(UPLOT_CSS "${PACKAGES}/uplot/dist/uPlot.min.css")
insert(REPORT_CSS "${SOURCE}/report.css")
insert(REPORT_JS "${bundle}")

# The hex digits of the page, 32 bytes a line.
file(WRITE "${OUTPUT}.html" "${page}")
file(READ "${OUTPUT}.html" bytes HEX)
string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
string(REPEAT "....." 32 line)
string(REGEX REPLACE "(${line})" "\\1\n" bytes "${bytes}")
file(WRITE "${OUTPUT}" "#include \"host/report/ReportPage.h\"

namespace verenwick::host {
namespace {

constexpr unsigned char kBytes[] = {
${bytes}
};

}  // namespace

std::string_view reportPage() {
  return {reinterpret_cast<const char*>(kBytes), sizeof kBytes};
}

}  // namespace verenwick::host
")
