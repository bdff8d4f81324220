#include "amplifier/block.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <string_view>

#include "amplifier/measurement.h"

namespace kolvane::amplifier {
namespace {

constexpr std::string_view kMagic = "KVAB";
constexpr std::uint8_t kVersion = 1;
constexpr std::size_t kStatusOffset = 5;

// Integer samples at the end of the range; an input at 120 % still fits.
constexpr double kFullScale16 = 25'000;
constexpr double kFullScale32 = 1'000'000'000;

class Writer {
 public:
  Writer(std::string& out, ByteOrder order) : out_(out), order_(order) {}

  template <typename Unsigned>
  void Put(Unsigned value) {
    for (unsigned i = 0; i < sizeof(Unsigned); ++i) {
      const unsigned byte = order_ == ByteOrder::kIntel ? i : static_cast<unsigned>(sizeof(Unsigned)) - 1 - i;
      out_ += static_cast<char>((value >> (8 * byte)) & 0xFF);
    }
  }
  void PutFloat(float value) { Put(std::bit_cast<std::uint32_t>(value)); }
  void PutDouble(double value) { Put(std::bit_cast<std::uint64_t>(value)); }
  void PutText(std::string_view text, std::size_t width) {
    out_ += text;
    out_.append(width - text.size(), ' ');
  }

 private:
  std::string& out_;
  ByteOrder order_;
};

class BlockBuilder {
 public:
  BlockBuilder(std::string& out, const BlockRequest& request, const Settings& settings, std::uint64_t seed)
      : out_(out),
        start_(out.size()),
        writer_(out, request.order),
        request_(request),
        settings_(settings),
        seed_(seed),
        scale_(Scale()) {}

  void Build() {
    PutHeader();
    for (std::size_t i = 0; i < request_.sample_count; ++i) {
      for (std::size_t c = 0; c < request_.channel_count; ++c) PutSample(i, request_.first_channel + c);
    }
    // Known only after all samples.
    out_[start_ + kStatusOffset] = static_cast<char>(Status());
  }

 private:
  // A block has one scale for all channels, set by the widest range; 1 if samples are not scaled.
  float Scale() const {
    double widest = 0;
    for (std::size_t c = 0; c < request_.channel_count; ++c)
      widest = std::max(widest, settings_.channels[request_.first_channel + c].range);
    switch (request_.type) {
      case SampleType::kInt16:
        return static_cast<float>(widest / kFullScale16);
      case SampleType::kInt32:
        return static_cast<float>(widest / kFullScale32);
      case SampleType::kFloat32:
        break;
    }
    return 1;
  }

  std::uint8_t Status() const {
    return static_cast<std::uint8_t>((request_.recording ? 1u : 0u) | (overrange_ ? 2u : 0u) |
                                     (beyond_limit_ ? 4u : 0u) | static_cast<unsigned>(settings_.mode) << 3 |
                                     static_cast<unsigned>(request_.type) << 5 |
                                     static_cast<unsigned>(request_.order) << 7);
  }

  void PutHeader() {
    writer_.PutText(kMagic, kMagic.size());
    writer_.Put(kVersion);
    writer_.Put(std::uint8_t{0});
    writer_.Put(static_cast<std::uint8_t>(request_.first_channel + 1));
    writer_.Put(static_cast<std::uint8_t>(request_.channel_count));
    writer_.Put(static_cast<std::uint16_t>(request_.sample_count));
    writer_.Put(static_cast<std::uint16_t>(settings_.rate));
    writer_.Put(request_.time_ms);
    writer_.PutFloat(scale_);
    writer_.Put(request_.block_number);
    writer_.PutDouble(static_cast<double>(request_.first_index) / static_cast<double>(settings_.rate));
    writer_.PutText(settings_.channels[request_.first_channel].name, kMaxNameLength);
  }

  void PutSample(std::size_t i, std::size_t channel) {
    const Sample sample =
        Measure(settings_, seed_, channel, request_.first_index + static_cast<std::int64_t>(i));
    overrange_ = overrange_ || sample.overrange;
    beyond_limit_ = beyond_limit_ || LimitState(settings_.channels[channel], sample.net) != 0;
    switch (request_.type) {
      case SampleType::kInt16:
        return writer_.Put(static_cast<std::uint16_t>(Steps<std::int16_t>(sample.net)));
      case SampleType::kInt32:
        return writer_.Put(static_cast<std::uint32_t>(Steps<std::int32_t>(sample.net)));
      case SampleType::kFloat32:
        return writer_.PutFloat(static_cast<float>(sample.net));
    }
  }

  // A large zero or tare can take the value out of the type's range; it is then clamped.
  template <typename Integer>
  Integer Steps(double net) const {
    const double steps = std::nearbyint(net / static_cast<double>(scale_));
    return static_cast<Integer>(
        std::clamp<double>(steps, std::numeric_limits<Integer>::min(), std::numeric_limits<Integer>::max()));
  }

  std::string& out_;
  std::size_t start_;
  Writer writer_;
  const BlockRequest& request_;
  const Settings& settings_;
  std::uint64_t seed_;
  float scale_;
  bool overrange_ = false;
  bool beyond_limit_ = false;
};

}  // namespace

void AppendBlock(std::string& out, const BlockRequest& request, const Settings& settings,
                 std::uint64_t seed) {
  BlockBuilder(out, request, settings, seed).Build();
}

}  // namespace kolvane::amplifier
