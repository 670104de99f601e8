# Installs the files that an administrator may change, or that the service brings itself, where they are missing: a
# file that is there stays as it is.
foreach(file QUEUEDefinitions/defaultQUEUE.xml HTMLStylesheets/default.css sp_sendPLN_create.sql)
  set(installed "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/${file}")
  if(EXISTS "${installed}" OR IS_SYMLINK "${installed}")
    message(STATUS "Keeping: ${installed}")
  else()
    cmake_path(GET file PARENT_PATH folder)
    file(INSTALL "${CMAKE_CURRENT_LIST_DIR}/${file}" DESTINATION "${CMAKE_INSTALL_PREFIX}/${folder}")
  endif()
endforeach()
