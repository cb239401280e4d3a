// Runs the benchmarks and then prints each one as a ratio against the peer
// it names: a label "peer:<peer benchmark function>" ties a run to that peer, and the ratio printed
// is peer time / own time, so 1.0 means as fast as the peer and 0.7 means 70% of the peer's
// throughput.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace {

class RatioReporter : public benchmark::ConsoleReporter {
 public:
  RatioReporter() : ConsoleReporter(isatty(1) ? OO_ColorTabular : OO_Tabular) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& r : runs) {
      if (r.run_type != Run::RT_Iteration || r.error_occurred) continue;
      const std::string name = r.run_name.function_name;
      times_[name] = r.GetAdjustedRealTime() * benchmark::GetTimeUnitMultiplier(r.time_unit);
      const std::string::size_type at = r.report_label.find("peer:");
      if (at != std::string::npos) peers_.push_back({name, r.report_label.substr(at + 5)});
    }
  }

  void PrintRatios() const {
    if (peers_.empty()) return;
    std::printf("\nRatios (peer time / own time; higher is faster):\n");
    for (const auto& [name, peer] : peers_) {
      auto own = times_.find(name), other = times_.find(peer);
      if (own == times_.end() || other == times_.end() || own->second <= 0) continue;
      std::printf("  %-48s %6.3f x %s\n", name.c_str(), other->second / own->second, peer.c_str());
    }
  }

 private:
  std::map<std::string, double> times_;
  std::vector<std::pair<std::string, std::string>> peers_;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.PrintRatios();
  benchmark::Shutdown();
  return 0;
}
