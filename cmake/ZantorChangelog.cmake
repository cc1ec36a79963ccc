# Reads CHANGELOG.md, which has one heading for each release, the newest first: "## 1.2 (2026-11-22)".
# The packages' own changelog and the releases of the software catalogue are made from it.
#
# zantor_read_changelog(FILE): sets, for the caller,
#   ZANTOR_RELEASE_DATE    that of the newest release, as 2026-11-22
#   ZANTOR_RELEASES_XML    <release> elements
#   ZANTOR_DEBIAN_CHANGES  entries in the format of deb-changelog(5)
# Ends with an error if the newest release is not the version of the project.
function(zantor_read_changelog file)
    file(READ ${file} text)
    string(REPLACE ";" "," text "${text}") # a semicolon would end an entry of CMake's lists
    string(REPLACE "\n## " ";" releases "${text}")
    list(POP_FRONT releases) # what stands above the first heading
    set(xml "")
    set(debian "")
    set(newest "")
    foreach(release IN LISTS releases)
        if(NOT release MATCHES "^([0-9.]+) [(]([0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9])[)]\n+(.*)$")
            message(FATAL_ERROR "${file}: a heading looks like \"## 1.2 (2026-11-22)\", not as this one: ${release}")
        endif()
        set(version ${CMAKE_MATCH_1})
        set(day ${CMAKE_MATCH_2})
        set(changes "${CMAKE_MATCH_3}")
        string(STRIP "${changes}" changes)
        if(newest STREQUAL "")
            set(newest ${version})
            set(ZANTOR_RELEASE_DATE ${day} PARENT_SCOPE)
        endif()

        string(REGEX REPLACE "(^|\n)- " "\\1  * " lines "${changes}")
        string(REGEX REPLACE "\n  ([^ *])" "\n    \\1" lines "${lines}")
        execute_process(COMMAND date --utc --date=${day} "+%a, %d %b %Y %T +0000" COMMAND_ERROR_IS_FATAL ANY
            OUTPUT_VARIABLE stamp OUTPUT_STRIP_TRAILING_WHITESPACE)
        string(APPEND debian "zantor (${version}) stable; urgency=medium\n\n${lines}\n\n"
            " -- ${ZANTOR_MAINTAINER}  ${stamp}\n\n")

        string(REPLACE "&" "&amp;" items "${changes}")
        string(REPLACE "<" "&lt;" items "${items}")
        string(REGEX REPLACE "\n +" " " items "${items}")
        string(REGEX REPLACE "(^|\n)- ([^\n]*)" "\\1          <li>\\2</li>" items "${items}")
        string(APPEND xml "    <release version=\"${version}\" date=\"${day}\" type=\"stable\">\n      <description>\n"
            "        <ul>\n${items}\n        </ul>\n      </description>\n    </release>\n")
    endforeach()
    if(NOT newest VERSION_EQUAL PROJECT_VERSION)
        message(FATAL_ERROR "${file} begins with the release \"${newest}\", but the project's version is ${PROJECT_VERSION}.")
    endif()
    set(ZANTOR_RELEASES_XML "${xml}" PARENT_SCOPE)
    set(ZANTOR_DEBIAN_CHANGES "${debian}" PARENT_SCOPE)
endfunction()
