# Runs COMMAND and leaves what it prints in the file OUTPUT; fails if it fails.
file(REMOVE ${OUTPUT})
list(REMOVE_ITEM COMMAND "")
execute_process(COMMAND ${COMMAND} OUTPUT_FILE ${OUTPUT}.new COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${OUTPUT}.new ${OUTPUT})
