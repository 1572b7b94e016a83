# The program itself, started without a display.
foreach(name IN ITEMS options install hostile namespace)
    add_test(NAME console_${name} COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/console_${name}.sh
                                          ${CMAKE_BINARY_DIR} ${SEVEN_ZIP})
    set_tests_properties(console_${name} PROPERTIES TIMEOUT 900)
endforeach()
set_tests_properties(console_namespace PROPERTIES SKIP_RETURN_CODE 77)
add_test(NAME upgrades COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/upgrades.sh ${CMAKE_BINARY_DIR}
                               ${SEVEN_ZIP})
set_tests_properties(upgrades PROPERTIES TIMEOUT 900 SKIP_RETURN_CODE 77)
add_test(NAME front_door COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/front_door.sh ${CMAKE_BINARY_DIR}
                                 ${SEVEN_ZIP})
