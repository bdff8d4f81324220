kolvane_test(pane_text_test
  pane_output_test.cpp pane_store_test.cpp pane_text_test.cpp pane_moves_test.cpp pane_utf8_test.cpp
  LINK kolvane_terminal)
