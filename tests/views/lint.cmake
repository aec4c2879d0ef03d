# Fails if the linter has anything to say of the window's QML files, but for two complaints:
# - "unqualified": a delegate may use an id from around it; the pragma that says so is newer than
#   the oldest toolkit that we build with,
# - "deferred-property-id": a control's own parts have ids, which only styles to be replaced mustn't.
execute_process(COMMAND "${LINT}" -I "${IMPORTS}" --unqualified disable --deferred-property-id disable ${FILES}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0 OR output MATCHES "(Warning|Error):")
    message(FATAL_ERROR "${output}")
endif()
