# Run by cpack before it packs: manual and changelog as Debian has them, and the licence where it looks for it.
set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share)
set(documents ${root}/doc/kova-import)
file(RENAME ${documents}/LICENSE ${documents}/copyright)
file(RENAME ${documents}/CHANGELOG.md ${documents}/changelog)
file(GLOB manuals ${root}/man/man1/*.1)
foreach(file ${documents}/changelog ${manuals})
  execute_process(COMMAND gzip -9n ${file} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
