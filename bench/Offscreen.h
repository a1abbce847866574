#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <benchmark/benchmark.h>

namespace sonnel::bench {

/// The main program of benchmarks with windows, which nobody sees: `Application` is the kind of
/// QApplication they run in.
template <class Application>
int RunOffscreen(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    const Application application(argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

}  // namespace sonnel::bench
