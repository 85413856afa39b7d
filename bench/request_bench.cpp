// Requests to the provider, as the CIM server makes them, on switches of different sizes.
//
// Every lookup by key is a walk over the whole tunnel table: the time of a single get grows with the number
// of tunnels, and so does that of each object of an enumeration which asks the platform for its tunnel again.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <string>
#include <utility>

#include "emulator/control.h"
#include "emulator/generator.h"
#include "server/broker/broker.h"
#include "server/model/cim_model.h"
#include "server/model/request.h"
#include "server/model/result_sink.h"
#include "server/provider/provider.h"
#include "server/provider/provider_call.h"

namespace {

using namespace cimserver;

class LoadedProvider {
  public:
    static const Provider& get() {
        static const LoadedProvider LOADED;
        return LOADED.provider_;
    }

  private:
    Broker broker_{[](const std::string&) {}};
    Provider provider_{FCIP_PROVIDER, "FCIPProvider", broker_};
};

// What the provider answers to an operation on this class or instance.
Collector answer(Operation operation, ObjectPath target) {
    Collector found;
    call_provider(LoadedProvider::get(), {.operation = operation, .target = std::move(target)}, found);
    return found;
}

ObjectPath class_path(const char* className) {
    return {{}, "root/cimv2", className, {}};
}

void emulate(const benchmark::State& state) {
    emulator::load_json(emulator::generate_scenario(static_cast<std::uint32_t>(state.range(0)), 1));
    emulator::record_calls(false);
}

// The provider's traces are part of its work, but not of what the console should show.
void drop_traces() {
    if (std::freopen("/dev/null", "w", stdout) == nullptr) std::perror("/dev/null");
}

void enumerate(benchmark::State& state, const char* className) {
    emulate(state);
    std::size_t objects = 0;
    for ([[maybe_unused]] auto iteration : state) {
        objects = answer(Operation::EnumerateInstances, class_path(className)).instances.size();
    }
    state.counters["objects"] = static_cast<double>(objects);
}

void get_last(benchmark::State& state, const char* className) {
    emulate(state);
    const Collector names = answer(Operation::EnumerateInstanceNames, class_path(className));
    for ([[maybe_unused]] auto iteration : state) {
        const Collector found = answer(Operation::GetInstance, names.paths.back());
        if (found.instances.size() != 1) {
            state.SkipWithError("the last object is not found");
            break;
        }
    }
}

BENCHMARK_CAPTURE(enumerate, FCIPProtocolEndPoint, "KESTO_FCIPProtocolEndPoint")
    ->RangeMultiplier(10)
    ->Range(10, 1000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(enumerate, TCPSettings, "KESTO_TCPSettings")
    ->RangeMultiplier(10)
    ->Range(10, 1000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(get_last, FCIPProtocolEndPoint, "KESTO_FCIPProtocolEndPoint")
    ->RangeMultiplier(10)
    ->Range(10, 1000)
    ->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    drop_traces();
    // Standard output belongs to the provider's traces, so the results go to standard error.
    benchmark::ConsoleReporter reporter;
    reporter.SetOutputStream(&std::cerr);
    reporter.SetErrorStream(&std::cerr);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
