kolvane_test(terminal_session_test
  command_history_test.cpp
  connect_commands_test.cpp
  connect_press_test.cpp
  interactive_send_test.cpp
  log_control_test.cpp
  log_file_test.cpp
  post_send_check_test.cpp
  receive_controls_test.cpp
  received_text_test.cpp
  response_clock_test.cpp
  session_answer_test.cpp
  session_binary_test.cpp
  session_send_test.cpp
  session_texts_test.cpp
  terminal_state_test.cpp
  terminators_test.cpp
  LINK kolvane_terminal)
