# Puts the parts of the report into one page, and the page into a C++ source as bytes.
# usage: cmake -DSOURCE=host/report/page -DPACKAGES=node_modules -DOUTPUT=ReportPage.cpp
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

set(scripts format layout tree plots sources free interference criticals forced report)
list(TRANSFORM scripts PREPEND "${SOURCE}/")
list(TRANSFORM scripts APPEND ".js")

file(READ "${SOURCE}/report.html" page)
insert(UPLOT_LICENSE "${PACKAGES}/uplot/LICENSE")
insert(UPLOT_CSS "${PACKAGES}/uplot/dist/uPlot.min.css")
insert(UPLOT_JS "${PACKAGES}/uplot/dist/uPlot.iife.min.js")
insert(REPORT_CSS "${SOURCE}/report.css")
insert(REPORT_JS ${scripts})

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
