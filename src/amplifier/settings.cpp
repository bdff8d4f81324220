#include "amplifier/settings.h"

namespace kolvane::amplifier {
namespace {

ChannelSettings Channel(std::string_view name, std::string_view unit, std::string_view sensor, double range,
                        double filter) {
  ChannelSettings channel;
  channel.name = name;
  channel.unit = unit;
  channel.sensor = sensor;
  channel.range = range;
  channel.filter = filter;
  channel.low = -range;
  channel.high = range;
  return channel;
}

}  // namespace

Settings DefaultSettings() {
  Settings settings;
  settings.channels = {
      Channel("Force", "kN", "FULL", 20, 100),
      Channel("Torque", "Nm", "FULL", 500, 100),
      Channel("Pressure", "bar", "FULL", 10, 50),
      Channel("Temperature",
              "\xB0"
              "C",
              "PT100", 200, 1),
      Channel("Displacement", "mm", "LVDT", 50, 50),
      Channel("Strain", "\xB5m/m", "QUARTER", 2000, 20),
      Channel("Voltage", "V", "U10V", 10, 1000),
      Channel("Current", "mA", "I20MA", 20, 500),
  };
  return settings;
}

}  // namespace kolvane::amplifier
