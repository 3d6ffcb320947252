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
