# What can be done to an application: through the window, on failing storage, killed half-way.
add_executable(ops_tests
    leaks.cpp
    ops_agreement.cpp
    ops_batch_test.cpp
    ops_cancel_test.cpp
    ops_files_test.cpp
    ops_menu_test.cpp
    ops_storage_test.cpp
    ops_support.cpp
    ops_text_test.cpp
    support.cpp
    ui_support.cpp)
target_compile_definitions(ops_tests PRIVATE QUIVER_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
                                             SEVEN_ZIP="${SEVEN_ZIP}")
target_link_libraries(ops_tests PRIVATE quiver_window GTest::gtest Qt6::Test)
gtest_discover_tests(ops_tests TEST_PREFIX ops. TEST_FILTER -Storage.* DISCOVERY_TIMEOUT 300
                     PROPERTIES TIMEOUT 600)

add_test(NAME ops_storage COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/ops_storage.sh
                                  $<TARGET_FILE:ops_tests>)
set_tests_properties(ops_storage PROPERTIES TIMEOUT 600 SKIP_RETURN_CODE 77)

add_executable(ops_driver leaks.cpp ops_agreement.cpp ops_driver.cpp)
target_link_libraries(ops_driver PRIVATE quiver_window)
foreach(name IN ITEMS bad_packages hostile_names)
    add_test(NAME ${name} COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/${name}.sh
                                  ${CMAKE_BINARY_DIR} ${SEVEN_ZIP} $<TARGET_FILE:ops_driver>)
    set_tests_properties(${name} PROPERTIES TIMEOUT 900)
endforeach()

# A sanitizer's own memory maps and threads make the sweep slow, and it would find nothing more.
if(NOT QUIVER_SANITIZE)
    add_test(NAME ops_killed COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/ops_killed.sh
                                     $<TARGET_FILE:ops_driver>)
    set_tests_properties(ops_killed PROPERTIES TIMEOUT 3000 SKIP_RETURN_CODE 77)
endif()
