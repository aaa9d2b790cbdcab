// Path splitting. Goal: at most 130 ns where the blocks alone cost about 105, and faster than building a
// std::filesystem::path, which splits too. `blocks alone` is what no splitter with this list can do without: the
// private copy, the sentinel and a node an item.
#include <kord/path.h>

#include <benchmark/benchmark.h>

#include <filesystem>
#include <iterator>
#include <list>
#include <memory>
#include <string>

namespace {

using benchmark::DoNotOptimize;
using benchmark::State;

constexpr const char* six_items = "C:/home/project/source/file.cpp"; // Drive, three directories, name and extension
constexpr const char* six_names = "home/project/source/include/kord/Makefile";
constexpr const char* detours = "/home/user/./project/build/../source/../include/kord/path.h";

std::string deep() {
    std::string path = "C:";
    for (int i = 0; i != 1000; ++i) path += i % 3 == 2 ? "/.." : "/directory";
    return path;
}

void kord_split(State& state, const std::string& text) {
    const astring path(text.data(), text.size());
    for (auto _ : state) {
        const KordSplitPath split(path);
        DoNotOptimize(&split);
    }
}

void std_split(State& state, const std::string& text) {
    for (auto _ : state) {
        const std::filesystem::path split(text);
        DoNotOptimize(&split);
    }
}

void blocks_alone(State& state) {
    for (auto _ : state) {
        void* text = std::malloc(48);
        DoNotOptimize(text);
        void* nodes[7];
        for (void*& node : nodes) DoNotOptimize(node = ::operator new(40));
        for (void* node : nodes) ::operator delete(node);
        std::free(text);
    }
}

const bool registered = [] {
    using benchmark::RegisterBenchmark;
    for (const auto& [name, text] : {std::pair<std::string, std::string>{"path/six items/", six_items},
                                     {"path/six names/", six_names},
                                     {"path/detours/", detours},
                                     {"path/1000 items/", deep()}}) {
        RegisterBenchmark((name + "kord").c_str(), kord_split, text);
        RegisterBenchmark((name + "std-filesystem").c_str(), std_split, text);
    }
    RegisterBenchmark("path/six items/blocks alone", blocks_alone);
    return true;
}();

} // namespace
