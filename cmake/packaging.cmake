# cmake --build build/release --target deb makes the Debian package in the build folder.
# Programs lie in lib/guanchaotai; share/guanchaotai is what store/application_folder makes each user's
# own application folder from.
set(programs lib/guanchaotai)
set(files share/guanchaotai)

install(TARGETS guanchaotai caijiqi history_builder live_check RUNTIME DESTINATION ${programs})
if(GUANCHAO_BROWSER)
    install(TARGETS guanchao_browser LIBRARY DESTINATION ${programs})
endif()
install(PROGRAMS tools/guanchaotai-lianxi DESTINATION ${programs})
set(commands ${PROJECT_BINARY_DIR}/command)
file(MAKE_DIRECTORY ${commands})
foreach(command guanchaotai guanchaotai-lianxi caijiqi)
    file(CREATE_LINK ../${programs}/${command} ${commands}/${command} SYMBOLIC)
    install(FILES ${commands}/${command} DESTINATION bin)
endforeach()

# The practice has a folder below, out of which nothing comes into the users' application folders.
install(TARGETS practice_market practice_history prepare_stores
    RUNTIME DESTINATION ${programs}/practice)
install(FILES tools/practice_market.sh DESTINATION ${programs}/practice)
foreach(list codes themes sectors commodities initials practice_news practice_words)
    install(FILES data/${list}.csv DESTINATION share/guanchaotai-lianxi)
endforeach()

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
install(FILES data/io.guanchaotai.guanchaotai.metainfo.xml DESTINATION share/metainfo)
set(icons share/icons/hicolor)
set(drawing ${PROJECT_SOURCE_DIR}/data/guanchaotai.svg)
install(FILES ${drawing} DESTINATION ${icons}/scalable/apps)
set(made)
foreach(size 16 22 24 32 48 64 128 256 512)
    set(icon ${PROJECT_BINARY_DIR}/icons/${size}.png)
    add_custom_command(OUTPUT ${icon}
        COMMAND rsvg-convert --width ${size} --height ${size} --output ${icon} ${drawing}
        DEPENDS ${drawing}
        VERBATIM)
    install(FILES ${icon} DESTINATION ${icons}/${size}x${size}/apps RENAME guanchaotai.png)
    list(APPEND made ${icon})
endforeach()
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/icons)

# install_zipped(SOURCE DESTINATION NAME)
function(install_zipped source destination name)
    set(zipped ${PROJECT_BINARY_DIR}/zipped/${destination}/${name}.gz)
    cmake_path(GET zipped PARENT_PATH folder)
    file(MAKE_DIRECTORY ${folder})
    add_custom_command(OUTPUT ${zipped}
        COMMAND gzip -9nc ${PROJECT_SOURCE_DIR}/${source} > ${zipped}
        DEPENDS ${source}
        VERBATIM)
    install(FILES ${zipped} DESTINATION ${destination})
    set(made ${made} ${zipped} PARENT_SCOPE)
endfunction()

foreach(page guanchaotai.1 caijiqi.1)
    install_zipped(docs/man/${page} share/man/man1 ${page})
    install_zipped(docs/man/zh_CN/${page} share/man/zh_CN/man1 ${page})
endforeach()
# The page of both.
foreach(folder share/man/man1 share/man/zh_CN/man1)
    file(CREATE_LINK guanchaotai.1.gz ${PROJECT_BINARY_DIR}/zipped/${folder}/guanchaotai-lianxi.1.gz
        SYMBOLIC)
    install(FILES ${PROJECT_BINARY_DIR}/zipped/${folder}/guanchaotai-lianxi.1.gz DESTINATION ${folder})
endforeach()
install(FILES LICENSE DESTINATION share/doc/guanchaotai RENAME copyright)
install_zipped(cmake/debian/changelog share/doc/guanchaotai changelog.Debian)
install(FILES cmake/debian/lintian-overrides DESTINATION share/lintian/overrides RENAME guanchaotai)
install(FILES docs/collector.md docs/history.md DESTINATION share/doc/guanchaotai)
install(FILES docs/pictures/collector.png DESTINATION share/doc/guanchaotai/pictures)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME guanchaotai)
set(CPACK_PACKAGE_CONTACT "The 观潮台 developers <guanchaotai@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
# 3.7-2: the version of the windows, and what number of package that is.
file(STRINGS cmake/debian/changelog newest LIMIT_COUNT 1)
string(REGEX REPLACE "^[^-]*-([^)]*)\\).*" "\\1" release "${newest}")
set(CPACK_DEBIAN_PACKAGE_RELEASE ${release})
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
    DEPENDS guanchaotai caijiqi history_builder live_check practice_market practice_history
            prepare_stores ${made}
    USES_TERMINAL
    COMMENT "Package in ${PROJECT_BINARY_DIR}")
