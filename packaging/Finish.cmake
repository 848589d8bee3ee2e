# What Debian wants beyond "cmake --install": CPack runs this over the files before it packs them.

function(run)
  execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(tree ${CPACK_TEMPORARY_INSTALL_DIRECTORY})
file(GLOB_RECURSE pages ${tree}/usr/share/man/*.1)
run(gzip -9n ${pages} ${tree}/usr/share/doc/walrim/changelog)

# The same sources give the same package, byte by byte.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  run(find ${tree} -exec touch --no-dereference --date=@$ENV{SOURCE_DATE_EPOCH} {} +)
endif()
