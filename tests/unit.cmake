# The tests that link the program's own code, each run in a process of its own.
add_executable(unit_tests
    leaks.cpp
    archive_test.cpp
    bytes_test.cpp
    database_test.cpp
    descriptor_test.cpp
    dialogs_test.cpp
    discovery_test.cpp
    errors_test.cpp
    language_test.cpp
    packages_test.cpp
    phoneroot_test.cpp
    registry_test.cpp
    shell_test.cpp
    storage_test.cpp
    support.cpp
    zconfig_test.cpp)
target_compile_definitions(unit_tests PRIVATE QUIVER_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
target_link_libraries(unit_tests PRIVATE quiver_window GTest::gtest Qt6::Test)
gtest_discover_tests(unit_tests DISCOVERY_TIMEOUT 300 PROPERTIES TIMEOUT 300 LABELS unit)
