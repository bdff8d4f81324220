#pragma once

#include <functional>
#include <string>
#include <vector>

namespace kolvane::bench {

double Median(std::vector<double> values);

/// Medians of rounds in which the baseline and the measured case took turns.
struct Comparison {
  double baseline;
  double measured;
  double ratio;       ///< median of the rounds' ratios
  double difference;  ///< median of the rounds' differences
};

using Measure = std::function<double()>;

/// Runs both alternately, `rounds` times.
Comparison Alternate(int rounds, const Measure& baseline, const Measure& measured);

double SecondsOf(const std::function<void()>& step);

/// What a row of the report measures, and what it is compared with; empty without a baseline.
struct Claim {
  const char* claim;
  const char* baseline;
  const char* unit;
};

/// The rows of bench/report, on standard output, separated by tabs: claim, baseline, its figure, the
/// measured one, unit, the figure compared with the goal, goal, and "met" or "MISSED" ("-" without a goal).
void PrintAtMostTimes(const Claim& claim, const Comparison& comparison, double goal);
void PrintAtMostMore(const Claim& claim, const Comparison& comparison, double goal);
void PrintAtMost(const Claim& claim, double baseline, double measured, double goal);
void PrintAtLeast(const Claim& claim, double baseline, double measured, double goal);
void PrintWithoutGoal(const Claim& claim, const Comparison& comparison);
void PrintWithoutGoal(const Claim& claim, double measured);

}  // namespace kolvane::bench
