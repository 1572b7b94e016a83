# The main window, driven by keys and mouse on Qt's offscreen platform.
add_executable(ui_tests
    leaks.cpp
    support.cpp
    ui_browser_test.cpp
    ui_layout_test.cpp
    ui_list_test.cpp
    ui_menu_test.cpp
    ui_support.cpp
    ui_waiting_test.cpp)
target_compile_definitions(ui_tests PRIVATE QUIVER_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
                                            SEVEN_ZIP="${SEVEN_ZIP}")
target_link_libraries(ui_tests PRIVATE quiver_window GTest::gtest Qt6::Test)
gtest_discover_tests(ui_tests DISCOVERY_TIMEOUT 300 PROPERTIES TIMEOUT 300)
add_test(NAME ui_large_font COMMAND ui_tests --gtest_filter=*Layout*)
set_tests_properties(ui_large_font PROPERTIES ENVIRONMENT QUIVER_FONT_SCALE=1.25 TIMEOUT 300)
