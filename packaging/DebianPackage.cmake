# The Debian package, which script/package builds. What the programs are linked with becomes a
# dependency by itself; what they load when they run is in the file runtime-packages.

set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS runtime-packages changelog)

# velmor_runtime_packages(VARIABLE WORD...)
# The packages behind these words in runtime-packages, as Debian lists them.
function(velmor_runtime_packages variable)
    list(JOIN ARGN "|" words)
    file(STRINGS runtime-packages lines REGEX "^(${words}) ")
    list(TRANSFORM lines REPLACE "^[a-z]+ +" "")
    list(JOIN lines ", " lines)
    set(${variable} "${lines}" PARENT_SCOPE)
endfunction()

file(STRINGS changelog newest LIMIT_COUNT 1)
if(NOT newest MATCHES "^velmor \\(${PROJECT_VERSION}\\) ")
    message(FATAL_ERROR "packaging/changelog doesn't begin with version ${PROJECT_VERSION}.")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME velmor)
set(CPACK_PACKAGE_VENDOR Velmor)
# The project has no mail address; whoever distributes the package puts theirs here.
set(CPACK_PACKAGE_CONTACT "The Velmor developers <velmor@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "turn paper into searchable PDF files")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "\
Velmor scans with one button: the pages in the scanner become one PDF, with
the text in it to search and to copy, filed by date. The untouched page images
are kept beside it, so that no later edit ever loses quality.

Saved scans can be cut out of their pages, straightened and given other
levels, turned, merged, split and renamed; PDF files and images come in too.

It works with scanners on USB and on the network, with all that SANE drives,
from a window of its own or from the command line.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
velmor_runtime_packages(CPACK_DEBIAN_PACKAGE_DEPENDS depends)
velmor_runtime_packages(CPACK_DEBIAN_PACKAGE_RECOMMENDS recommends service)
include(CPack)
