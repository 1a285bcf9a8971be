# The reference documentation: `cmake --build build --target docs` runs Doxygen over the public
# header into build/docs/html/index.html. Doxygen fails on any undocumented exported function,
# record or field, so the target doubles as the check that the header documents everything.
find_package(Doxygen QUIET)
if(DOXYGEN_FOUND)
  set(ZEL_DOCS_DIR ${PROJECT_BINARY_DIR}/docs)
  configure_file(${PROJECT_SOURCE_DIR}/docs/Doxyfile.in ${ZEL_DOCS_DIR}/Doxyfile @ONLY)
  add_custom_target(docs
    COMMAND ${DOXYGEN_EXECUTABLE} ${ZEL_DOCS_DIR}/Doxyfile
    WORKING_DIRECTORY ${ZEL_DOCS_DIR}
    DEPENDS ${PROJECT_SOURCE_DIR}/include/zel_sdk_dual.h ${PROJECT_SOURCE_DIR}/docs/reference.md
    COMMENT "Reference documentation in ${ZEL_DOCS_DIR}/html/index.html"
    VERBATIM)
endif()
