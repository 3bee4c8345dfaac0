# Puts the option list into the manual page: cmake -DTEMPLATE= -DOPTIONS= -DOUTPUT= -P insert_options.cmake
file(READ ${TEMPLATE} page)
file(READ ${OPTIONS} options)
string(REPLACE "%OPTIONS%" "${options}" page "${page}")
file(WRITE ${OUTPUT} "${page}")
