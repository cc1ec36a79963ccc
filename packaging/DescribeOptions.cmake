# Runs PROGRAM and writes what it says about its options as PAGE to OUTPUT. If TEMPLATE is given, the text takes the
# place of @OPTIONS@ there. An OUTPUT that ends with .gz is compressed, without a name or a time inside.
# The other variables of the template come with -D, too.
execute_process(COMMAND ${PROGRAM} --describe=${PAGE} OUTPUT_VARIABLE OPTIONS COMMAND_ERROR_IS_FATAL ANY)
string(STRIP "${OPTIONS}" OPTIONS)
set(text "${OPTIONS}\n")
if(TEMPLATE)
    file(READ ${FILES_PAGE} FILES)
    string(STRIP "${FILES}" FILES)
    file(READ ${TEMPLATE} text)
    string(CONFIGURE "${text}" text @ONLY)
endif()
string(REGEX REPLACE "[.]gz$" "" plain ${OUTPUT})
file(WRITE ${plain} "${text}")
if(NOT plain STREQUAL OUTPUT)
    execute_process(COMMAND gzip -9nf ${plain} COMMAND_ERROR_IS_FATAL ANY)
endif()
