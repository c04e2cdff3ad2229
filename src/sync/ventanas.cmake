include_guard(GLOBAL)
add_library(sync_ui STATIC
    ${CMAKE_CURRENT_LIST_DIR}/FrmSincronizar.cpp
    ${CMAKE_CURRENT_LIST_DIR}/FrmSincronizar.ui)
target_link_libraries(sync_ui PUBLIC data_ui)
