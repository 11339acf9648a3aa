#include "bench/Figures.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <map>

namespace bench {
namespace {

void print(const std::string& name, double value, const std::string& unit, double bound) {
  std::printf("%-52s %10.3f %-6s at most %8.3f  %s\n", name.c_str(), value, unit.c_str(), bound,
              value <= bound ? "holds" : "falls short");
  std::fflush(stdout);
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const size_t middle = values.size() / 2;
  return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

/// Keeps the median times and prints nothing.
class MedianReporter : public benchmark::BenchmarkReporter {
 public:
  std::map<std::string, double> medians;

  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs)
      if (run.aggregate_name == "median")
        medians[run.run_name.function_name] = run.GetAdjustedRealTime();
  }
};

void registerTimed(const std::string& name, const std::function<void()>& work) {
  benchmark::RegisterBenchmark(name.c_str(),
                               [work](benchmark::State& state) {
                                 for ([[maybe_unused]] auto iteration : state)
                                   work();
                               })
      ->Repetitions(15)
      ->ReportAggregatesOnly()
      ->MinTime(0.05)
      ->UseRealTime();
}

}  // namespace

double secondsOf(const std::function<void()>& work) {
  const auto begin = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

Figures::Figures(int argc, char** argv) : program(argv[0]), filters(argv + 1, argv + argc) {
}

bool Figures::isChosen(const std::string& name) const {
  return filters.empty() || std::any_of(filters.begin(), filters.end(), [&](const std::string& filter) {
           return name.find(filter) != std::string::npos;
         });
}

void Figures::add(const Ratio& ratio) {
  if (isChosen(ratio.name))
    ratios.push_back(ratio);
}

void Figures::add(const MeasuredRatio& ratio) {
  if (!isChosen(ratio.name))
    return;
  others.push_back([ratio] {
    std::vector<double> quotients;
    ratio.subject();  // the first of each warms up and doesn't count
    ratio.reference();
    for (int round = 0; round < ratio.rounds; ++round) {
      const double subject = ratio.subject();
      quotients.push_back(subject / ratio.reference());
    }
    print(ratio.name, median(quotients), "x", ratio.atMost);
  });
}

void Figures::add(const Amount& amount) {
  if (!isChosen(amount.name))
    return;
  others.push_back([amount] {
    std::vector<double> values;
    for (int round = 0; round < amount.rounds; ++round)
      values.push_back(amount.measure());
    print(amount.name, median(values), amount.unit, amount.atMost);
  });
}

int Figures::run() {
  std::string interleaving = "--benchmark_enable_random_interleaving=true";
  char* arguments[] = {program.data(), interleaving.data(), nullptr};
  int count = 2;
  benchmark::Initialize(&count, arguments);
  for (const Ratio& ratio : ratios) {
    registerTimed("subject", ratio.subject);
    registerTimed("reference", ratio.reference);
    MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::ClearRegisteredBenchmarks();
    print(ratio.name, reporter.medians["subject"] / reporter.medians["reference"], "x", ratio.atMost);
  }
  for (const auto& measure : others)
    measure();
  return 0;
}

}  // namespace bench
