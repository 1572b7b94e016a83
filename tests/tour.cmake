# A walk through the program's own window, which scripts/tour starts. The program's entry is linked
# in under another name, so that everything but the keys is as in a run by a user.
add_executable(tour tour.cpp tour_walk.cpp ${PROJECT_SOURCE_DIR}/src/app/main.cpp)
set_source_files_properties(${PROJECT_SOURCE_DIR}/src/app/main.cpp
                            PROPERTIES COMPILE_DEFINITIONS main=quiverMain)
target_link_libraries(tour PRIVATE quiver_ui Qt6::Test)

if(QUIVER_DEMO)
    add_test(NAME tour COMMAND ${PROJECT_SOURCE_DIR}/scripts/tour)
    set_tests_properties(tour PROPERTIES ENVIRONMENT QUIVER_BUILD=${CMAKE_BINARY_DIR}
                                         TIMEOUT 600)
endif()
