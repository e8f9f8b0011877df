# Installs the packages of SOURCE/package-lock.json into DIRECTORY/node_modules.
# usage: cmake -DNPM=... -DSOURCE=... -DDIRECTORY=... -P InstallPackages.cmake
file(MAKE_DIRECTORY ${DIRECTORY})
file(COPY ${SOURCE}/package.json ${SOURCE}/package-lock.json DESTINATION ${DIRECTORY})
execute_process(COMMAND "${NPM}" ci --no-audit --no-fund --ignore-scripts
  WORKING_DIRECTORY ${DIRECTORY}
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "The packages of package-lock.json can't be installed. The first build needs "
    "npm and a registry that it reaches.\n${output}")
endif()
# npm keeps the time of the archive; a build asks when it was installed.
file(TOUCH ${DIRECTORY}/node_modules/.package-lock.json)
