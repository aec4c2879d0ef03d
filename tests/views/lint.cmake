# Fails if the linter has anything to say of the window's QML files. Left out are complaints that
# this version of the linter raises wrongly:
# - an id from around a delegate is found all right ("unqualified"; the pragma that says so is newer),
# - so is one in a control's own parts ("deferred-property-id"),
# - of what C++ adds to a type the linter knows only what the toolkit's lists of types name.
execute_process(COMMAND "${LINT}" -I "${IMPORTS}" --unqualified disable --deferred-property-id disable ${FILES}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0 OR output MATCHES "(Warning|Error):")
    message(FATAL_ERROR "${output}")
endif()
