#include "QVPlatform/Log.h"
#include "Support/Processors.h"
#include "Support/Rows.h"

#include <benchmark/benchmark.h>

int main(int argumentCount, char** arguments) {
    qv::Log::setSink({});
    benchmarksupport::stayOnOneProcessor();
    benchmarksupport::addRows();
    benchmark::Initialize(&argumentCount, arguments);
    benchmark::AddCustomContext("processor", benchmarksupport::nameOfProcessor());
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
