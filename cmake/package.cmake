# The Debian package: `cpack -G DEB` in the build folder makes zel-sdk-dual_<version>_amd64.deb
# with the library, the header, the CMake package, the pkg-config file, zel-sim, zelctl and
# their man pages, installed under /usr.

# Man pages of the two programs, made from their --help by help2man.
find_program(ZEL_HELP2MAN help2man)
if(ZEL_HELP2MAN AND ZEL_TOOLS AND NOT ZEL_FUZZ AND NOT ZEL_SANITIZE)
  set(ZEL_MAN_DIR ${PROJECT_BINARY_DIR}/man)
  file(MAKE_DIRECTORY ${ZEL_MAN_DIR})
  set(ZEL_MAN_PAGES)
  set(ZEL_MAN_NAME_zel-sim "simulate a G5 or G6 LED panel controller")
  set(ZEL_MAN_NAME_zelctl "drive a G5 or G6 LED panel controller")
  foreach(tool zel-sim zelctl)
    add_custom_command(OUTPUT ${ZEL_MAN_DIR}/${tool}.1
      COMMAND ${ZEL_HELP2MAN} --no-info --version-string=${PROJECT_VERSION}
              --name=${ZEL_MAN_NAME_${tool}} --output=${ZEL_MAN_DIR}/${tool}.1 $<TARGET_FILE:${tool}>
      DEPENDS ${tool}
      VERBATIM)
    list(APPEND ZEL_MAN_PAGES ${ZEL_MAN_DIR}/${tool}.1)
  endforeach()
  add_custom_target(man ALL DEPENDS ${ZEL_MAN_PAGES})
  install(FILES ${ZEL_MAN_PAGES} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zel-sdk-dual)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "zel_sdk_dual maintainers <maintainers@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
  "Drives the controllers of G5 and G6 LED display panels (library, simulator, zelctl)")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/package)
include(CPack)
