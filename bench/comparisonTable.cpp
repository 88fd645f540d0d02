#include "comparisonTable.h"

#include <algorithm>
#include <cstdio>
#include <utility>

void ComparisonTable::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
        // "row|column/real_time", or "row|column/repeats:5/real_time".
        const std::string& name = run.run_name.function_name;
        const std::size_t bar = name.find('|');
        const std::string rowName = name.substr(0, bar);
        const std::string column = name.substr(bar + 1);
        Row& row = m_rows[rowName];
        row.index = run.family_index;
        double seconds = run.real_accumulated_time / static_cast<double>(run.iterations);
        const auto pixels = run.counters.find("pixels");
        if (pixels != run.counters.end()) {
            seconds /= pixels->second.value;
            row.countsPixels = true;
        }
        const auto best = row.seconds.find(column);
        if (best == row.seconds.end() || seconds < best->second) row.seconds[column] = seconds;
    }
}

void ComparisonTable::Finalize()
{
    std::printf("%-42s %9s %9s %9s %9s | %10s %10s %10s\n", "Mpixel/s (fastest of the repetitions)", "ours", "peer",
                "limit", "2 threads", "ours/peer", "time/limit", "2T/1T");
    std::vector<const std::pair<const std::string, Row>*> inOrder;
    for (const auto& entry : m_rows) {
        inOrder.push_back(&entry);
    }
    std::sort(inOrder.begin(), inOrder.end(),
              [](const auto* a, const auto* b) { return a->second.index < b->second.index; });
    for (const auto* entry : inOrder) {
        const auto& [name, row] = *entry;
        const auto column = [&row = row](const char* which) {
            const auto found = row.seconds.find(which);
            return found == row.seconds.end() ? 0.0 : found->second;
        };
        const double ours = column("ours");
        if (!row.countsPixels) {
            std::printf("%-42s %6.1f ns\n", name.c_str(), ours * 1e9);
            continue;
        }
        const auto printSpeed = [&](double seconds) {
            if (seconds > 0) {
                std::printf(" %9.0f", 1e-6 / seconds);
            } else {
                std::printf(" %9s", "-");
            }
        };
        const auto printRatio = [](double numerator, double denominator) {
            if (numerator > 0 && denominator > 0) {
                std::printf(" %10.2f", numerator / denominator);
            } else {
                std::printf(" %10s", "-");
            }
        };
        std::printf("%-42s", name.c_str());
        printSpeed(ours);
        printSpeed(column("peer"));
        printSpeed(column("limit"));
        printSpeed(column("2 threads"));
        std::printf(" |");
        printRatio(column("peer"), ours);
        printRatio(ours, column("limit"));
        printRatio(ours, column("2 threads"));
        std::printf("\n");
    }
}
