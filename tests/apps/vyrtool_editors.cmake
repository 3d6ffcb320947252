# vyrtool domain and list on their own: OK prints the packed value (exit 0),
# a refused OK prints why and exits 3 without waiting, a screenshot without
# --accept ends as a Cancel (exit 1), and bad usage exits 2. The editors' own
# rules are tested in tst_attrtypesdlg and tst_listeditors.
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})

function(expect name expected_status expected_output)
    execute_process(COMMAND ${TOOL} ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE status
                    TIMEOUT 60)
    string(STRIP "${output}" output)
    if(NOT status EQUAL expected_status)
        message(FATAL_ERROR "${name}: exit ${status}, expected ${expected_status}; stderr: ${errors}")
    endif()
    if(NOT "${output}" STREQUAL "${expected_output}")
        message(FATAL_ERROR "${name}: printed [${output}], expected [${expected_output}]")
    endif()
    set(last_errors "${errors}" PARENT_SCOPE)
endfunction()

set(gpkg ${FORMATS}/geopackage.fmt)
expect("string set" 0 "a:b:\"x:y\"" list stringset "a:b:\"x:y\"" --accept)
expect("string map drops a key without its value" 0 "k1:v1" list stringmap "k1:v1:k2" --accept)
expect("read-only list" 0 "one:two" list stringlist "one:two" --source --accept)
expect("coded domain" 0 "roads:integer:1:Paved:2:Gravel" domain coded "roads:integer:1:Paved:2:Gravel"
       --format ${gpkg} --accept)
expect("range by name" 0 "speed" domain range "speed" --format ${gpkg} --accept)
expect("bad bound" 3 "" domain range "r:integer:0:abc" --format ${gpkg} --accept)
if(NOT last_errors MATCHES "minimum")
    message(FATAL_ERROR "bad bound: the refusal did not say why: ${last_errors}")
endif()
expect("screenshot only" 1 "" list stringmap "k:v" --screenshot ${WORK}/map.png)
if(NOT EXISTS ${WORK}/map.png)
    message(FATAL_ERROR "list --screenshot wrote no picture")
endif()
foreach(bad "domain;range;x" "domain;range;x;--format" "domain;huge;x;--format;${gpkg}" "list;stringx;a"
            "list;stringset" "list;stringset;a;--frobnicate" "domain;range;x;--format;${WORK}/missing.fmt")
    execute_process(COMMAND ${TOOL} ${bad} OUTPUT_QUIET ERROR_VARIABLE message RESULT_VARIABLE status TIMEOUT 60)
    if(NOT status EQUAL 2 OR message STREQUAL "")
        message(FATAL_ERROR "vyrtool ${bad}: expected exit 2 and a message, got ${status}")
    endif()
endforeach()
