#include "parallelRows.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace Command {

namespace {

/// Small enough that a band of a wide image stays in the cache between its steps, and that threads end together. A
/// multiple of 16, the height of the dither pattern, which begins anew with each band.
constexpr int kRowsPerBand = 16;

} // namespace

void parallelRows(int rows, unsigned threads, const std::function<void(int firstRow, int rowCount)>& work)
{
    const int bands = rows / kRowsPerBand + (rows % kRowsPerBand != 0 ? 1 : 0);
    std::atomic<int> nextBand{0};
    std::mutex failureMutex;
    std::exception_ptr failure;

    const auto run = [&] {
        try {
            for (int band = nextBand++; band < bands; band = nextBand++) {
                const int first = band * kRowsPerBand;
                work(first, std::min(kRowsPerBand, rows - first));
            }
        } catch (...) {
            nextBand = bands;
            const std::lock_guard<std::mutex> lock(failureMutex);
            if (!failure) failure = std::current_exception();
        }
    };

    std::vector<std::thread> helpers;
    const int wanted = std::min(bands, static_cast<int>(std::min(threads, 1024u)));
    try {
        for (int i = 1; i < wanted; ++i)
            helpers.emplace_back(run);
    } catch (const std::system_error&) {
        // No more threads to be had: the ones there are do the work.
    }
    run();
    for (std::thread& helper : helpers)
        helper.join();
    if (failure) std::rethrow_exception(failure);
}

} // namespace Command
