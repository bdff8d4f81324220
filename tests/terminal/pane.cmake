kolvane_test(pane_text_test
  pane_moves_test.cpp pane_output_test.cpp pane_store_test.cpp pane_text_test.cpp pane_utf8_test.cpp
  LINK kolvane_terminal)

kolvane_gui_test(output_pane_test
  pane_accessible_test.cpp pane_rows_test.cpp pane_window_edit_test.cpp pane_window_keys_test.cpp
  pane_window_mouse_test.cpp pane_window_test.cpp
  LINK kolvane_terminal_ui)
