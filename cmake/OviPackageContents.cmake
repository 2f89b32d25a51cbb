# Run by cpack on the tree that it is about to pack:
#   - gives each Debian package the licence under the name that Debian expects;
#   - with SOURCE_DATE_EPOCH set, gives every file that time, so that the same files make the same
#     archive, byte for byte.
set(root ${CPACK_TEMPORARY_DIRECTORY})

if(CPACK_GENERATOR STREQUAL "DEB")
    foreach(component IN LISTS CPACK_COMPONENTS_ALL)
        string(TOUPPER ${component} key)
        set(folder ${root}/${component}/usr/share/doc/${CPACK_DEBIAN_${key}_PACKAGE_NAME})
        file(MAKE_DIRECTORY ${folder})
        file(COPY_FILE ${CPACK_RESOURCE_FILE_LICENSE} ${folder}/copyright)
        file(CHMOD ${folder}/copyright PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
        file(REMOVE ${folder}/LICENSE)
    endforeach()
endif()

if(DEFINED ENV{SOURCE_DATE_EPOCH})
    execute_process(COMMAND
        find ${root} -exec touch --no-dereference --date=@$ENV{SOURCE_DATE_EPOCH} {} +
        COMMAND_ERROR_IS_FATAL ANY)
endif()
