# cmake --build build/release --target deb makes the Debian package in the build folder.
# Programs lie in lib/guanchaotai; share/guanchaotai is what store/application_folder makes each user's
# own application folder from.
set(programs lib/guanchaotai)
set(files share/guanchaotai)

install(TARGETS guanchaotai caijiqi history_builder live_check RUNTIME DESTINATION ${programs})
if(GUANCHAO_BROWSER)
    install(TARGETS guanchao_browser LIBRARY DESTINATION ${programs})
endif()
set(command ${PROJECT_BINARY_DIR}/command)
file(MAKE_DIRECTORY ${command})
file(CREATE_LINK ../${programs}/guanchaotai ${command}/guanchaotai SYMBOLIC)
install(FILES ${command}/guanchaotai DESTINATION bin)

file(STRINGS data/application_files.txt application_files REGEX "^[^#]" ENCODING UTF-8)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS data/application_files.txt)
foreach(file ${application_files})
    if(file MATCHES "(.+)/$")
        install(DIRECTORY ${CMAKE_MATCH_1} DESTINATION ${files})
    else()
        install(FILES ${file} DESTINATION ${files})
    endif()
endforeach()
install(FILES data/services.ini DESTINATION ${files})
install(DIRECTORY DESTINATION ${files}/自选股)
install(CODE "
    execute_process(
        COMMAND $<TARGET_FILE:prepare_stores>
            \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${files}\" \"${PROJECT_SOURCE_DIR}/data\"
        COMMAND_ERROR_IS_FATAL ANY)")

install(FILES data/guanchaotai.desktop DESTINATION share/applications)
install(FILES frame/looks/pet.png DESTINATION share/icons/hicolor/256x256/apps RENAME guanchaotai.png)
install(FILES LICENSE DESTINATION share/doc/guanchaotai RENAME copyright)
set(changelog ${PROJECT_BINARY_DIR}/changelog.gz)
add_custom_command(OUTPUT ${changelog}
    COMMAND gzip -9nc ${PROJECT_SOURCE_DIR}/cmake/debian/changelog > ${changelog}
    DEPENDS cmake/debian/changelog
    VERBATIM)
install(FILES ${changelog} DESTINATION share/doc/guanchaotai)
install(FILES cmake/debian/lintian-overrides DESTINATION share/lintian/overrides RENAME guanchaotai)
install(FILES docs/collector.md docs/history.md DESTINATION share/doc/guanchaotai)
install(FILES docs/pictures/collector.png DESTINATION share/doc/guanchaotai/pictures)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME guanchaotai)
set(CPACK_PACKAGE_CONTACT "The 观潮台 developers <guanchaotai@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Themes with their mean gain, quotes of their stocks, alarms, articles, counts
of news and research on the history of days. Each user has stores of their own.")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What no linker sees: services over TLS, sound, the words of the toolkit, Chinese letters.
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "ca-certificates, gstreamer1.0-plugins-base, gstreamer1.0-plugins-good, qt6-translations-l10n, fonts-noto-cjk")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils, qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_LIST_DIR}/require_packaging_tools.cmake)
include(CPack)

add_custom_target(deb
    # The archive holds Chinese names, whatever the locale of who builds it.
    COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C.UTF-8 ${CMAKE_CPACK_COMMAND}
    WORKING_DIRECTORY ${PROJECT_BINARY_DIR}
    DEPENDS guanchaotai caijiqi history_builder live_check prepare_stores ${changelog}
    USES_TERMINAL
    COMMENT "Package in ${PROJECT_BINARY_DIR}")
