#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "devlnk/port_session.h"

namespace kolvane::instrument {

/// Receives one answer and strips its termination, see InstrumentOptions::ReadTermination; returns the
/// status. The session's time-out applies to each 16 MiB.
std::int32_t ReadAnswer(devlnk::PortSession& session, std::string_view termination, std::string& answer);

/// Receives `count` bytes.
std::int32_t ReadCount(devlnk::PortSession& session, std::size_t count, std::string& bytes);

/// Receives the data of a block, see Instrument::QueryBlock. An answer that is not a block stays queued. May
/// change the session's time-out.
std::int32_t ReadBlock(devlnk::PortSession& session, std::string_view termination, std::string& data);

/// Throws std::invalid_argument if a part is not a number.
std::vector<double> SplitValues(std::string_view answer);

}  // namespace kolvane::instrument
