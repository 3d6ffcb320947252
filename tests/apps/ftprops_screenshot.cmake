# One screenshot of the feature type properties dialog on a real X server:
# vyr-ftprops on a copy of the bundled workspace, the dialog cancelled once
# the picture is taken.
file(REMOVE_RECURSE ${WORK})
file(COPY ${EXAMPLES}/ DESTINATION ${WORK})
set(page "")
if(PAGE)
    set(page --page ${PAGE})
endif()
execute_process(COMMAND sh ${XVFB_AGAIN} ${XVFB_RUN} -a -s "-screen 0 1280x1024x24" ${TOOL} ${WORK}/workspace.json
                        --edit ${FEATURE_TYPE} ${page} --screenshot ${OUTPUT}
    OUTPUT_VARIABLE said ERROR_VARIABLE problems RESULT_VARIABLE status)
if(NOT status EQUAL 1 OR NOT EXISTS ${OUTPUT})
    message(FATAL_ERROR "vyr-ftprops --edit ${FEATURE_TYPE}: exit ${status}, no picture: ${said} ${problems}")
endif()
