#pragma once

#include <string>

#include "base/runtime_error.h"
#include "base/temp_folder.h"
#include "component/settings.h"

namespace kolvane::component {

/// The settings of one terminal, loaded as at its start and saved as at its end.
struct StoredSettings {
  SettingsTarget Target() { return {connection, terminal, window}; }

  /// The error message, or an empty text.
  std::string Load(const std::string& file) {
    const auto store = OpenIniStore(file);
    try {
      LoadSettings(*store, Target(), true);
    } catch (const base::RuntimeError& error) {
      return error.what();
    }
    return "";
  }

  /// 0, or the errno.
  int Save(const std::string& file) {
    const auto store = OpenIniStore(file);
    const auto failure = SaveSettings(*store, Target());
    return failure ? failure->error : 0;
  }

  /// Gives every text and most numbers values that belong to `number` only.
  void FillWith(std::int16_t number, std::size_t length = 20) {
    const std::string text = std::to_string(number) + std::string(length, 'x');
    connection.ip_address = connection.usb_address = text;
    connection.address = connection.ip_port = number;
    terminal.receive.send_terminator = terminal.receive.receive_terminator = text;
    window.pane.font_name = window.command_list.font_name = text;
    window.pane.font_size = window.command_list.font_size = window.com_log = number;
  }

  /// The number passed to FillWith if all values belong to it, otherwise -1.
  std::int16_t FilledWith() const {
    const std::int16_t number = connection.address;
    const std::string& text = connection.ip_address;
    const bool numbers = connection.ip_port == number && window.pane.font_size == number &&
                         window.command_list.font_size == number && window.com_log == number;
    const bool texts = text.starts_with(std::to_string(number) + "x") && connection.usb_address == text &&
                       terminal.receive.send_terminator == text &&
                       terminal.receive.receive_terminator == text && window.pane.font_name == text &&
                       window.command_list.font_name == text;
    return numbers && texts ? number : std::int16_t{-1};
  }

  device::ConnectionParameters connection;
  terminal::TerminalState terminal;
  terminal::WindowSettings window;
};

}  // namespace kolvane::component
