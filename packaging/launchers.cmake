# Run by an installation: writes the files that name the program's path, which only it knows.
# DRAFTS has them with @program@ and @command@; made in MADE, they go where SHARE is.
set(program ${CMAKE_INSTALL_PREFIX}/${BIN}/vorlane)
set(command ${program})
if(program MATCHES "[^A-Za-z0-9/._+-]")
    set(command "\"${program}\"")
endif()

function(install_launcher name folder)
    configure_file(${DRAFTS}/${name}.in ${MADE}/${name} @ONLY)
    file(INSTALL ${MADE}/${name} DESTINATION ${CMAKE_INSTALL_PREFIX}/${SHARE}/${folder} TYPE FILE)
endfunction()

install_launcher(org.vorlane.Vorlane.desktop applications)
install_launcher(org.vorlane.Vorlane.service dbus-1/services)
