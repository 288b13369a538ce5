# What Debian wants of a package's files beyond their installation: programs without what only a debugger reads, and
# documents packed. CPack runs this when everything is installed into its folder and nothing is packed yet.

set(root ${CPACK_TEMPORARY_DIRECTORY}/ALL_COMPONENTS_IN_ONE/usr)

# run(COMMAND...)
function(run)
    execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

run(strip --strip-unneeded --remove-section=.comment --remove-section=.note
    ${root}/bin/corvane ${root}/libexec/corvane/corvane-helper ${root}/lib/corvane/libcorvane-app.so)

string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC) # that of SOURCE_DATE_EPOCH, where it is set
configure_file(${CMAKE_CURRENT_LIST_DIR}/changelog.in ${root}/share/doc/corvane/changelog.Debian @ONLY)
run(gzip --best --no-name ${root}/share/doc/corvane/changelog.Debian ${root}/share/man/man1/corvane.1)
