#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// How long the work takes, once.
[[nodiscard]] double secondsOf(const std::function<void()>& work);

/// What one benchmark program measures. Two pieces of work are timed in turn, in random order and many times
/// over, in the one run, and the ratio of their medians is the figure: it holds where the machine's speed
/// drifts.
struct Ratio {
  std::string name;
  std::function<void()> subject;
  std::function<void()> reference;
  double atMost;
};

/// The same for work that times itself, such as a process from outside. Each returns seconds, or whatever
/// unit the two share; each is asked `rounds` times, in turn.
struct MeasuredRatio {
  std::string name;
  std::function<double()> subject;
  std::function<double()> reference;
  double atMost;
  int rounds = 11;
};

/// A count, size or time that has no reference: the median of `rounds` measurements.
struct Amount {
  std::string name;
  std::function<double()> measure;
  std::string unit;
  double atMost;
  int rounds = 1;
};

/// Measures those whose names contain one of the program's arguments (all, without arguments) and prints a
/// line for each: name, value, bound, and "holds" or "falls short". Returns the program's exit status, 0
/// either way.
class Figures {
 public:
  Figures(int argc, char** argv);

  void add(const Ratio& ratio);
  void add(const MeasuredRatio& ratio);
  void add(const Amount& amount);
  [[nodiscard]] int run();

 private:
  [[nodiscard]] bool isChosen(const std::string& name) const;

  std::string program;
  std::vector<std::string> filters;
  std::vector<Ratio> ratios;
  std::vector<std::function<void()>> others;
};

}  // namespace bench
