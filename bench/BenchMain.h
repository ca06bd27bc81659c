#pragma once
// The shared start of the benchmark programs: parse the options, write and
// load the huge game once, then run the registered benchmarks.

#include "HugeGame.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>

inline std::unique_ptr<HugeGame> &hugeGame()
{
    static std::unique_ptr<HugeGame> game;
    return game;
}

// `ready` may refuse to time anything (returns an error text or nullptr).
template <typename Ready>
int runBenchmarks(int argc, char **argv, const char *program, Ready ready)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    try {
        hugeGame() = std::make_unique<HugeGame>();
    } catch (const std::exception &e) {
        std::fprintf(stderr, "%s: %s\n", program, e.what());
        return 1;
    }
    if (const char *problem = ready()) {
        std::fprintf(stderr, "%s: %s\n", program, problem);
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    hugeGame().reset();
    return 0;
}

inline int runBenchmarks(int argc, char **argv, const char *program)
{
    return runBenchmarks(argc, argv, program, [] { return static_cast<const char *>(nullptr); });
}
