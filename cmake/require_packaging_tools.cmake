# Read by CPack before it packs: without these it would leave the package's dependencies out, or go on
# to a failure that names no package.
foreach(tool dpkg-shlibdeps file rsvg-convert)
    find_program(tool_path ${tool} NO_CACHE)
    if(NOT tool_path)
        message(FATAL_ERROR "${tool} is missing: run tools/install_packages.sh package")
    endif()
    unset(tool_path)
endforeach()
