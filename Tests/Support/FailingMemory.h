#pragma once

/// Takes memory away from one thread at a time: everything that the program and its libraries allocate in C++ on that
/// thread. Libraries in C allocate for themselves and find enough. A program that calls any of these has an
/// `operator new` of its own.
namespace testsupport {

enum class Shortage {
    /// Those behind the one that failed succeed again.
    OfOneAllocation,
    Lasting,
};

/// From now on so many allocations of this thread succeed, and the next one fails.
void failAfter(long count, Shortage shortage = Shortage::OfOneAllocation);

/// All allocations of this thread succeed again. Says whether one has failed.
bool endFailing();

}  // namespace testsupport
