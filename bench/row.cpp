#include "row.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace kolvane::bench {
namespace {

std::string Number(double value) {
  char text[32];
  const int digits = value >= 1000 || value == 0 ? 0 : value >= 100 ? 1 : value >= 1 ? 2 : 3;
  std::snprintf(text, sizeof text, "%.*f", digits, value);
  return text;
}

std::string Signed(double value) { return (value < 0 ? "-" : "+") + Number(value < 0 ? -value : value); }

void Print(const Claim& claim, double baseline, double measured, const std::string& compared,
           const std::string& goal, const char* verdict) {
  const bool compares = *claim.baseline != '\0';
  std::printf("%s\t%s\t%s\t%s\t%s\t%s\t%s\t%s\n", claim.claim, compares ? claim.baseline : "-",
              compares ? Number(baseline).c_str() : "-", Number(measured).c_str(), claim.unit,
              compared.c_str(), goal.c_str(), verdict);
  std::fflush(stdout);
}

const char* Verdict(bool met) { return met ? "met" : "MISSED"; }

std::string Times(double baseline, double measured) {
  return baseline > 0 ? "x " + Number(measured / baseline) : "-";
}

}  // namespace

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

Comparison Alternate(int rounds, const Measure& baseline, const Measure& measured) {
  std::vector<double> baselines;
  std::vector<double> values;
  std::vector<double> ratios;
  std::vector<double> differences;
  for (int round = 0; round < rounds; ++round) {
    baselines.push_back(baseline());
    values.push_back(measured());
    ratios.push_back(values.back() / baselines.back());
    differences.push_back(values.back() - baselines.back());
  }
  return {Median(baselines), Median(values), Median(ratios), Median(differences)};
}

double SecondsOf(const std::function<void()>& step) {
  const auto start = std::chrono::steady_clock::now();
  step();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void PrintAtMostTimes(const Claim& claim, const Comparison& comparison, double goal) {
  Print(claim, comparison.baseline, comparison.measured, "x " + Number(comparison.ratio),
        "<= x " + Number(goal), Verdict(comparison.ratio <= goal));
}

void PrintAtMostMore(const Claim& claim, const Comparison& comparison, double goal) {
  Print(claim, comparison.baseline, comparison.measured, Signed(comparison.difference), "<= " + Signed(goal),
        Verdict(comparison.difference <= goal));
}

void PrintAtMost(const Claim& claim, double baseline, double measured, double goal) {
  Print(claim, baseline, measured, Times(baseline, measured), "<= " + Number(goal),
        Verdict(measured <= goal));
}

void PrintAtLeast(const Claim& claim, double baseline, double measured, double goal) {
  Print(claim, baseline, measured, Times(baseline, measured), ">= " + Number(goal),
        Verdict(measured >= goal));
}

void PrintWithoutGoal(const Claim& claim, const Comparison& comparison) {
  Print(claim, comparison.baseline, comparison.measured, "x " + Number(comparison.ratio), "-", "-");
}

void PrintWithoutGoal(const Claim& claim, double measured) { Print(claim, 0, measured, "-", "-", "-"); }

}  // namespace kolvane::bench
