# Run by CPack on the finished package: removes the postrm that CPack adds for any .so under lib/.
# Ours is a plugin that needs no ldconfig, and dpkg keeps listing a removed package with a postrm.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
    set(root ${CPACK_TEMPORARY_DIRECTORY}-repacked)
    file(REMOVE_RECURSE ${root})
    execute_process(COMMAND dpkg-deb --raw-extract ${package} ${root} COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE ${root}/DEBIAN/postrm)
    execute_process(COMMAND dpkg-deb --root-owner-group --build ${root} ${package}
        OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endforeach()
