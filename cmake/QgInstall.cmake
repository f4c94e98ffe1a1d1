# The installed layout: the program, its plug-in, the service and the updater lie together
# in lib/quillgate (the program finds them beside itself), with a bin/quillgate link. The
# demo installs into a sandbox root with the same rules.
include(GNUInstallDirs)
# Not the multiarch library folder: the program's folder is /usr/lib/quillgate everywhere.
set(QG_INSTALL_PROGRAM_DIR lib/quillgate)

foreach(target quillgate QGPlugin qgsasvc quillgate-update)
    if(TARGET ${target})
        install(TARGETS ${target}
            RUNTIME DESTINATION ${QG_INSTALL_PROGRAM_DIR}
            LIBRARY DESTINATION ${QG_INSTALL_PROGRAM_DIR})
    endif()
endforeach()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/resources/QGSaLangs
    DESTINATION ${QG_INSTALL_PROGRAM_DIR})
if(TARGET quillgate)
    install(CODE "
        file(MAKE_DIRECTORY \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
        file(CREATE_LINK ../${QG_INSTALL_PROGRAM_DIR}/quillgate
            \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/quillgate\" SYMBOLIC)")
endif()
install(FILES ${PROJECT_SOURCE_DIR}/packaging/applications/quillgate.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${PROJECT_SOURCE_DIR}/resources/icons/128-256.png
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/256x256/apps RENAME quillgate.png)
install(FILES ${PROJECT_SOURCE_DIR}/resources/icons/128-64.png
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/64x64/apps RENAME quillgate.png)
install(FILES ${PROJECT_SOURCE_DIR}/packaging/systemd/VelloranQuillgateSvc.service
    DESTINATION lib/systemd/system)
install(FILES ${PROJECT_SOURCE_DIR}/packaging/tmpfiles.d/quillgate.conf
    DESTINATION lib/tmpfiles.d)
file(GLOB QG_POLKIT_ACTIONS ${PROJECT_SOURCE_DIR}/packaging/polkit/*.policy)
if(QG_POLKIT_ACTIONS)
    install(FILES ${QG_POLKIT_ACTIONS} DESTINATION ${CMAKE_INSTALL_DATADIR}/polkit-1/actions)
endif()
