# cmake/packages.cmake - Debian packages, one for each component: ./run package
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orvel)
set(CPACK_PACKAGE_VENDOR "the Orvel developers")
set(CPACK_PACKAGE_CONTACT "the Orvel developers <developers@orvel.invalid>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development tools python documentation)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)  # and has the loader's cache renewed
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
# What belongs to one place under /usr/local has another under /usr.
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/arrange_packages.cmake)

# package(COMPONENT NAME SECTION ARCHITECTURE DEPENDS DESCRIPTION): ARCHITECTURE is any or all
function(package component name section architecture depends description)
  string(TOUPPER ${component} id)
  set(CPACK_DEBIAN_${id}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${id}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_DEBIAN_${id}_PACKAGE_DEPENDS "${depends}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${id}_DESCRIPTION "${description}" PARENT_SCOPE)
  if(architecture STREQUAL all)
    set(CPACK_DEBIAN_${id}_PACKAGE_ARCHITECTURE all PARENT_SCOPE)
    set(CPACK_DEBIAN_${id}_PACKAGE_SHLIBDEPS OFF PARENT_SCOPE)
  endif()
endfunction()
set(same "= ${PROJECT_VERSION}")
package(runtime liborvel${PROJECT_VERSION_MAJOR} libs any ""
  "numerical subroutines, shared libraries\nLinear systems, splines, integrals, zeros, minima, Fourier transforms,\ngamma functions, random numbers, sorting, calendar, called by name from\nFortran, C, C++ and Python.")
package(development liborvel-dev libdevel any "liborvel${PROJECT_VERSION_MAJOR} (${same})"
  "numerical subroutines, development files\nHeaders for C and C++, Fortran modules and their sources, static libraries,\nCMake and pkg-config files.")
package(tools orvel-tools math all "python3"
  "numerical subroutines, command-line tool\nExplains messages of the library, and measures accuracy and speed of the\nlibrary on this machine.")
set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS "liborvel${PROJECT_VERSION_MAJOR}")
package(python python3-orvel python all "python3, python3-numpy, liborvel${PROJECT_VERSION_MAJOR} (>= ${PROJECT_VERSION})"
  "numerical subroutines, Python package\nEvery routine as a function of numpy arrays.")
package(documentation orvel-doc doc all ""
  "numerical subroutines, manual\nMan pages of all routines, and the manual in HTML.")
include(CPack)
