# Installs the packages of package-lock.json into the current directory.
# usage: cmake -DNPM=... -P InstallPackages.cmake
execute_process(COMMAND "${NPM}" ci --no-audit --no-fund --ignore-scripts
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "The packages of package-lock.json can't be installed. The first build needs "
    "npm and a registry that it reaches.\n${output}")
endif()
