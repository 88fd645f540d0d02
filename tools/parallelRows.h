#pragma once

#include <functional>

namespace Command {

/// Calls work(firstRow, rowCount) for bands that together cover all rows once, on up to the given number of threads.
/// After a call has thrown no new band is started, and the first exception is thrown again when all threads are done.
void parallelRows(int rows, unsigned threads, const std::function<void(int firstRow, int rowCount)>& work);

} // namespace Command
