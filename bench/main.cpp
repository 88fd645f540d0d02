// Prints a table that compares the library with a peer and with the memory's speed, all measured in one run.
// Google Benchmark's own options apply, such as --benchmark_filter=REGEX.

#include "comparisonTable.h"
#include "rows.h"

#include <vector>

int main(int argc, char** argv)
{
    // Repetitions in random order, so that a slow moment of the machine does not fall on one column alone.
    std::vector<char*> arguments(argv, argv + argc);
    char repetitions[] = "--benchmark_repetitions=7";
    char interleaving[] = "--benchmark_enable_random_interleaving=true";
    char minimumTime[] = "--benchmark_min_time=0.03";
    arguments.insert(arguments.begin() + 1, {repetitions, interleaving, minimumTime});
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;

    registerPixelRows();
    registerFinalizeRows();
    registerFileRows();
    ComparisonTable table;
    benchmark::RunSpecifiedBenchmarks(&table);
    return 0;
}
