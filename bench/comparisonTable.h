#pragma once

#include <benchmark/benchmark.h>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// Runs benchmarks named "row|column" and prints one line per row, with the columns side by side and their ratios.
/// Columns: "ours", "peer" (OpenColorIO's CPU processor on the same work), "limit" (memcpy of the source buffer),
/// "2 threads" (ours on two regions).
class ComparisonTable : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    struct Row
    {
        std::map<std::string, double> seconds; ///< per pixel, or per call, of the fastest repetition of each column
        bool countsPixels = false;
        int64_t index = 0; ///< in the order of registration
    };

    std::map<std::string, Row> m_rows;
};
