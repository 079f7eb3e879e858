# Run by cpack before it packs: manual and changelog as Debian has them, the licence and the completion for zsh where it looks for them,
# and folders that everybody may enter, whatever the umask here.
set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share)
set(documents ${root}/doc/kova-import)
file(RENAME ${documents}/LICENSE ${documents}/copyright)
file(RENAME ${documents}/CHANGELOG.md ${documents}/changelog)
file(RENAME ${root}/zsh/site-functions ${root}/zsh/vendor-completions)
file(GLOB manuals ${root}/man/man1/*.1)
foreach(file ${documents}/changelog ${manuals})
  execute_process(COMMAND gzip -9n ${file} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
file(CHMOD_RECURSE ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
