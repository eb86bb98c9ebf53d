# Run by CPack on the finished package: takes out the postrm that it writes for every .so below
# lib/, ours being a plugin that no linker looks for. A package with one stays listed once removed.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
    set(root ${CPACK_TEMPORARY_DIRECTORY}-repacked)
    file(REMOVE_RECURSE ${root})
    execute_process(COMMAND dpkg-deb --raw-extract ${package} ${root} COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE ${root}/DEBIAN/postrm)
    execute_process(COMMAND dpkg-deb --root-owner-group --build ${root} ${package}
        OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endforeach()
