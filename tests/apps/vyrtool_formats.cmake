# vyrtool's commands for format authors over the example formats and
# schemas: each subcommand once with its expected answer, every example
# schema under its format, and bad input (exit 2 with a message).
set(formats ${STAGE}/formats)
function(expect_output expected)
    execute_process(COMMAND ${TOOL} ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE status)
    string(STRIP "${output}" output)
    if(NOT status EQUAL 0 OR NOT output STREQUAL "${expected}")
        message(FATAL_ERROR "vyrtool ${ARGN}: expected \"${expected}\", got \"${output}\" (exit ${status}) ${errors}")
    endif()
endfunction()

expect_output("vyr_char(30)" type generic "char(30)" --format ${formats}/shapefile.fmt)
expect_output("number(12,4)" type native "vyr_decimal(12,4)" --format ${formats}/shapefile.fmt)
expect_output("numeric(10,2)" type convert "number(10,2)" --from ${formats}/shapefile.fmt --to ${formats}/postgres.fmt)
expect_output("ROAD_NAME" name attr "road name" --format ${formats}/shapefile.fmt)
expect_output("SHAPE00" name attr "shape" --format ${formats}/shapefile.fmt)
expect_output("my_table00" name resolve "My Table" --format ${formats}/postgres.fmt --taken my_table)
expect_output("History_" name resolve "History" --format ${formats}/xlsx.fmt)
expect_output("Plan_2" name resolve "Plan" --format ${formats}/xlsx.fmt --taken Plan)
expect_output("routes" name resolve "routes" --format ${formats}/gpx.fmt --taken waypoints)

execute_process(COMMAND ${TOOL} type parse "enum(\"a b\",c),local" OUTPUT_VARIABLE parsed)
if(NOT parsed MATCHES "\"a b\"" OR NOT parsed MATCHES "\"suffix\": \"local\"")
    message(FATAL_ERROR "type parse: ${parsed}")
endif()
execute_process(COMMAND ${TOOL} format show ${formats}/postgres.fmt OUTPUT_VARIABLE shown RESULT_VARIABLE status)
if(NOT status EQUAL 0 OR NOT shown MATCHES "\"is_database\": true" OR NOT shown MATCHES "\"max_attribute_length\": 63")
    message(FATAL_ERROR "format show: ${shown}")
endif()

file(GLOB schemas ${SCHEMAS}/*.json)
foreach(schema IN LISTS schemas)
    get_filename_component(name ${schema} NAME_WE)
    string(REGEX REPLACE "-.*" "" format ${name})
    execute_process(COMMAND ${TOOL} schema show ${schema} --format ${formats}/${format}.fmt
        OUTPUT_VARIABLE shown ERROR_VARIABLE errors RESULT_VARIABLE status)
    if(NOT status EQUAL 0 OR NOT shown MATCHES "\"name\"")
        message(FATAL_ERROR "schema show ${name}: exit ${status} ${errors}")
    endif()
endforeach()

file(WRITE ${WORK}/broken.json "{\"feature_type\": \"x\",\n \"attributes\": {\"a\": [1]}}")
foreach(bad "format" "format;show" "format;show;/nonexistent.fmt" "type;generic;x"
        "type;convert;x;--from;${formats}/csv.fmt" "name;resolve;x" "name;resolve;x;--format"
        "schema;show;${WORK}/broken.json;--format;${formats}/csv.fmt" "type;parse;x;--bogus;1"
        "type;parse;enum(\"a b\",c" "type;parse;number(10,2")
    execute_process(COMMAND ${TOOL} ${bad} OUTPUT_QUIET ERROR_VARIABLE message RESULT_VARIABLE status)
    if(NOT status EQUAL 2 OR message STREQUAL "")
        message(FATAL_ERROR "vyrtool ${bad}: expected exit 2 and a message, got ${status}")
    endif()
endforeach()

# Every name GPX allows is taken: no name, exit 1, and a reason.
execute_process(COMMAND ${TOOL} name resolve tracks --format ${formats}/gpx.fmt --taken waypoints --taken routes
                        --taken route_points --taken tracks --taken track_points
    OUTPUT_VARIABLE output ERROR_VARIABLE message RESULT_VARIABLE status)
if(NOT status EQUAL 1 OR NOT output STREQUAL "" OR NOT message MATCHES "every name the format allows is taken")
    message(FATAL_ERROR "name resolve with every name taken: exit ${status}, said \"${output}\" ${message}")
endif()

# schema diff: each example equals itself, and a copy that differs only in
# key order and indentation; one real difference exits 1, in text and JSON;
# a file that cannot be read exits 2 with a message.
function(expect_diff expected_status old new)
    execute_process(COMMAND ${TOOL} schema diff ${old} ${new} --format ${formats}/shapefile.fmt ${ARGN}
        OUTPUT_VARIABLE diff ERROR_VARIABLE errors RESULT_VARIABLE status)
    if(NOT status EQUAL expected_status)
        message(FATAL_ERROR "schema diff ${old} ${new} ${ARGN}: exit ${status} (want ${expected_status})\n${diff}${errors}")
    endif()
    set(diff "${diff}" PARENT_SCOPE)
    set(errors "${errors}" PARENT_SCOPE)
endfunction()
foreach(schema IN LISTS schemas)
    get_filename_component(name ${schema} NAME_WE)
    string(REGEX REPLACE "-.*" "" format ${name})
    execute_process(COMMAND ${TOOL} schema diff ${schema} ${schema} --format ${formats}/${format}.fmt
        OUTPUT_VARIABLE diff RESULT_VARIABLE status)
    if(NOT status EQUAL 0 OR NOT diff STREQUAL "No changes.\n")
        message(FATAL_ERROR "schema diff ${name} against itself: exit ${status}: ${diff}")
    endif()
endforeach()
set(roads ${SCHEMAS}/shapefile-roads.json)
file(WRITE ${WORK}/roads-reordered.json "{\"lists\":{\"*vyr_parameter_value\":[\"windows-1252\",\"EPSG:25832\",\"2D\"],
\"*vyr_format_attr_type\":[\"char(20)\"],\"*vyr_parameter_name\":[\"ENCODING\",\"COORDSYS\",\"DIMENSION\"],
\"*vyr_format_attr_name\":[\"shapefile_type\"]},\"attribute_order\":[\"ROAD_NAME\",\"LANES\",\"OPENED\",\"TOLL\"],
      \"attributes\":{\"*TOLL\":\"logical\",\"TOLL\":\"vyr_boolean\",\"*OPENED\":\"date\",\"OPENED\":\"vyr_date\",
 \"*LANES\":\"number(2,0)\",\"LANES\":\"vyr_decimal(2,0)\",\"*ROAD_NAME\":\"char(40)\",\"ROAD_NAME\":\"vyr_char(40)\",
\t\"vyr_geometry{0}\":\"vyr_line\",\"*vyr_geometry{0}\":\"shapefile_arc\"},  \"feature_type\":\"ROADS\"}")
expect_diff(0 ${roads} ${WORK}/roads-reordered.json)
# The settings a workspace keeps beside the schema are compared too.
file(READ ${roads} fanout)
string(REPLACE "\"*TOLL\": \"logical\"" "\"*TOLL\": \"logical\", \"vyr_fanout\": \"yes\", \"vyr_fanout_attribute\": \"LANES\""
       fanout "${fanout}")
file(WRITE ${WORK}/roads-fanout.json "${fanout}")
expect_diff(1 ${roads} ${WORK}/roads-fanout.json)
string(FIND "${diff}" "General\n" general)
string(FIND "${diff}" "LANES" chosen)
if(general EQUAL -1 OR chosen EQUAL -1)
    message(FATAL_ERROR "schema diff of fan-out settings:\n${diff}")
endif()
file(READ ${roads} changed)
string(REPLACE "number(2,0)" "number(4,0)" changed "${changed}")
string(REPLACE "vyr_decimal(2,0)" "vyr_decimal(4,0)" changed "${changed}")
string(REPLACE "\"windows-1252\"" "\"UTF-8\"" changed "${changed}")
file(WRITE ${WORK}/roads-changed.json "${changed}")
expect_diff(1 ${roads} ${WORK}/roads-changed.json)
set(want "User Attributes\n  Retyped LANES: number(2,0) (vyr_decimal(2,0)) -> number(4,0) (vyr_decimal(4,0))\n"
         "Parameters\n  Character Encoding: windows-1252 -> UTF-8\n")
string(JOIN "" want ${want})
if(NOT diff STREQUAL want)
    message(FATAL_ERROR "schema diff of a retyped attribute and a parameter:\n${diff}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E env LANG=de_DE.UTF-8 ${TOOL} schema diff ${roads} ${WORK}/roads-changed.json
                        --format ${formats}/shapefile.fmt OUTPUT_VARIABLE german)
if(NOT german MATCHES "^Benutzerattribute\n.*\nParameter\n  Zeichenkodierung: windows-1252 -> UTF-8\n")
    message(FATAL_ERROR "schema diff under a German locale is not in German:\n${german}")
endif()
expect_diff(1 ${roads} ${WORK}/roads-changed.json --json)
string(JSON equal GET "${diff}" equal)
string(JSON kind GET "${diff}" user_attributes 0 kind)
string(JSON subject GET "${diff}" parameters 0 subject)
if(equal OR NOT kind STREQUAL "retyped" OR NOT subject STREQUAL "Character Encoding")
    message(FATAL_ERROR "schema diff --json:\n${diff}")
endif()

# A feature type moved to another dataset is not compared in the words of
# the format it left.
string(REPLACE "\"*TOLL\": \"logical\"" "\"*TOLL\": \"logical\", \"vyr_format\": \"POSTGRES\"" moved "${changed}")
file(WRITE ${WORK}/roads-moved.json "${moved}")
expect_diff(2 ${roads} ${WORK}/roads-moved.json)
if(NOT errors MATCHES "roads-moved.json.*POSTGRES")
    message(FATAL_ERROR "schema diff of a moved feature type: ${errors}")
endif()

string(SUBSTRING "${changed}" 0 60 truncated)
file(WRITE ${WORK}/truncated.json "${truncated}")
file(REMOVE ${WORK}/loop-a.json ${WORK}/loop-b.json)
file(CREATE_LINK loop-b.json ${WORK}/loop-a.json SYMBOLIC)
file(CREATE_LINK loop-a.json ${WORK}/loop-b.json SYMBOLIC)
foreach(bad ${WORK}/missing.json ${WORK}/truncated.json ${SCHEMAS} ${WORK}/loop-a.json)
    get_filename_component(named ${bad} NAME)
    expect_diff(2 ${roads} ${bad})
    if(NOT errors MATCHES "${named}")
        message(FATAL_ERROR "schema diff with ${bad}: the message does not name it: ${errors}")
    endif()
    expect_diff(2 ${bad} ${roads} --json)
endforeach()
file(WRITE ${WORK}/garbage.fmt "no capabilities here")
foreach(bad "schema;diff;${roads}" "schema;diff;${roads};${roads}" "schema;show;${roads};--json;--format;x"
        "schema;diff;${roads};${roads};--format;${WORK}/garbage.fmt"
        "schema;diff;${roads};${roads};--format;/nonexistent.fmt")
    execute_process(COMMAND ${TOOL} ${bad} OUTPUT_QUIET ERROR_VARIABLE message RESULT_VARIABLE status)
    if(NOT status EQUAL 2 OR message STREQUAL "")
        message(FATAL_ERROR "vyrtool ${bad}: expected exit 2 and a message, got ${status}")
    endif()
endforeach()
