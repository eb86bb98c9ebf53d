# Run at installation, when the program's path is known: writes the files that contain this path. Configures
# the templates in DRAFTS (@program@, @command@) into MADE and installs them.
set(program ${CMAKE_INSTALL_PREFIX}/${BIN}/vorlane)
set(command ${program})
if(program MATCHES "[^A-Za-z0-9/._+-]")
    set(command "\"${program}\"")
endif()

# A macro, not a function: file(INSTALL) adds what it installs to a variable of the current scope, from which
# install_manifest.txt is written.
macro(install_launcher name folder)
    configure_file(${DRAFTS}/${name}.in ${MADE}/${name} @ONLY)
    file(INSTALL ${MADE}/${name} DESTINATION ${CMAKE_INSTALL_PREFIX}/${folder} TYPE FILE)
endmacro()

install_launcher(org.vorlane.Vorlane.desktop ${SHARE}/applications)
install_launcher(org.vorlane.Vorlane.service ${SHARE}/dbus-1/services)
install_launcher(vorlane.service lib/systemd/user)
