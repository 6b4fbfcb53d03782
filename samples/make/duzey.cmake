# The maker of samples/duzey-fatura.xlsx; the sample stands beside it and is not made by the build.
add_executable(make_duzey ${CMAKE_CURRENT_LIST_DIR}/make_duzey.cpp)
target_link_libraries(make_duzey PRIVATE workbooksupport kervan_options)
