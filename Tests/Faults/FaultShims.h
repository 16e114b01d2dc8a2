#pragma once

#include <cstddef>

/// What stands between the libraries and the system in these tests: clocks that run as they are told, names that are
/// looked up without a network, and a certificate authority that only this process trusts. It comes before the system's
/// libraries, by being linked or by LD_PRELOAD; a program that it was preloaded into asks the environment.
#define QV_FAULTS_EXPORT __attribute__((visibility("default")))

extern "C" {

/// From now on so many of the clocks' seconds go into one of ours; 1 is as usual. A clock never goes back. Also the
/// variable QV_FAULT_CLOCK_SPEED.
QV_FAULTS_EXPORT void qvFaultsSetClockSpeed(long factor);

/// Moves the steady clock on at once, as if so much time had gone by.
QV_FAULTS_EXPORT void qvFaultsAdvanceSteadyClock(long seconds);

/// Sets the wall clock so far from the system's. Also the variable QV_FAULT_WALL_CLOCK.
QV_FAULTS_EXPORT void qvFaultsSetWallClock(long seconds);

/// From now on the system has no thread left, or has some again.
QV_FAULTS_EXPORT void qvFaultsRefuseThreads(bool refuses);

/// Trusts what this certificate (DER) has signed; nothing of it with size 0.
QV_FAULTS_EXPORT void qvFaultsTrust(const unsigned char* certificate, std::size_t size);
}
