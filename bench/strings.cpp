// Core strings against their peers. A row is named WIDTH/OPERATION/WHO; bench/report.py divides them.
//
// Goals, as ratios within one run:
//   copy             at least 3 times faster than QString
//   piece of 100     at least 4 times faster than std::string::substr
//   append each      at most 1.8 (8-bit) and 4 (16-bit) times std::string: the exact 16-byte growth rule costs that
//   append reserved  parity
//   upper, lower     at least 5 times faster than the best peer
//   build 100        parity with std::string
#include <kord/string.h>

#include <benchmark/benchmark.h>

#include <string>

#ifdef BENCH_ABSL
#include <absl/strings/ascii.h>
#endif
#ifdef BENCH_ICU
#include <unicode/ustring.h>
#endif
#ifdef BENCH_QT
#include <QByteArray>
#include <QString>
#endif

namespace {

using benchmark::DoNotOptimize;
using benchmark::State;

template <class Text>
using Unit = typename Text::value_type;

template <class Text>
Text text_of(std::size_t n) {
    Text text;
    for (std::size_t i = 0; i != n; ++i) text += static_cast<Unit<Text>>("The quick brown fox, "[i % 21]);
    return text;
}

template <class Text>
void copy(State& state) {
    const Text source = text_of<Text>(100);
    for (auto _ : state) {
        const Text made(source);
        DoNotOptimize(made.data());
    }
}

template <class Text>
void move(State& state) {
    Text a = text_of<Text>(100);
    for (auto _ : state) {
        Text b(std::move(a));
        DoNotOptimize(b);
        a = std::move(b);
        DoNotOptimize(a);
    }
}

template <class Text>
void piece(State& state) {
    const Text source = text_of<Text>(300);
    for (auto _ : state) DoNotOptimize(source.substr(50, 100));
}

template <class Text>
void build(State& state) {
    const Text source = text_of<Text>(100);
    const Unit<Text>* const text = source.data();
    for (auto _ : state) {
        DoNotOptimize(text);
        DoNotOptimize(Text(text, 100u));
    }
}

template <class Text>
void fill(State& state) {
    for (auto _ : state) DoNotOptimize(Text(100u, Unit<Text>{'x'}));
}

/// Per character: 200 of them, one by one.
template <class Text, bool reserved>
void append(State& state) {
    for (auto _ : state) {
        Text text;
        if constexpr (reserved) text.reserve(200);
        for (int i = 0; i != 200; ++i) {
            text += Unit<Text>{'x'};
            benchmark::ClobberMemory();
        }
        DoNotOptimize(text);
    }
    state.SetItemsProcessed(state.iterations() * 200);
}

/// 1000 characters in bits of 10.
template <class Text>
void concatenate(State& state) {
    const Text bit = text_of<Text>(10);
    for (auto _ : state) {
        Text text;
        text.reserve(1000);
        for (int i = 0; i != 100; ++i) text.append(bit);
        DoNotOptimize(text);
    }
}

/// The middle of 200 characters, shorter and longer in turn.
template <class Text>
void replace(State& state) {
    Text text = text_of<Text>(200);
    const Text shorter = text_of<Text>(8), longer = text_of<Text>(16);
    for (auto _ : state) {
        text.replace(100u, 16u, shorter);
        text.replace(100u, 8u, longer);
        DoNotOptimize(text);
    }
}

template <class Text>
void upper(State& state) {
    Text text = text_of<Text>(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) DoNotOptimize(text.make_upper());
}

template <class Text>
void lower(State& state) {
    Text text = text_of<Text>(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) DoNotOptimize(text.make_lower());
}

/// Text in which every word has a letter beyond ASCII.
template <class Text>
void upper_latin(State& state) {
    Text text = text_of<Text>(static_cast<std::size_t>(state.range(0)));
    for (unsigned int i = 5; i < text.length(); i += 8) text.set_at(i, static_cast<Unit<Text>>(0xE9));
    for (auto _ : state) DoNotOptimize(text.make_upper());
}

void register_width_8() {
    using benchmark::RegisterBenchmark;
    RegisterBenchmark("8/copy/kord", copy<astring>);
    RegisterBenchmark("8/copy/std", copy<std::string>);
    RegisterBenchmark("8/move/kord", move<astring>);
    RegisterBenchmark("8/move/std", move<std::string>);
    RegisterBenchmark("8/piece of 100/kord", piece<astring>);
    RegisterBenchmark("8/piece of 100/std", piece<std::string>);
    RegisterBenchmark("8/build 100/kord", build<astring>);
    RegisterBenchmark("8/build 100/std", build<std::string>);
    RegisterBenchmark("8/fill 100/kord", fill<astring>);
    RegisterBenchmark("8/fill 100/std", fill<std::string>);
    RegisterBenchmark("8/append each/kord", append<astring, false>);
    RegisterBenchmark("8/append each/std", append<std::string, false>);
    RegisterBenchmark("8/append reserved/kord", append<astring, true>);
    RegisterBenchmark("8/append reserved/std", append<std::string, true>);
    RegisterBenchmark("8/append 100 bits/kord", concatenate<astring>);
    RegisterBenchmark("8/append 100 bits/std", concatenate<std::string>);
    RegisterBenchmark("8/replace/kord", replace<astring>);
    RegisterBenchmark("8/replace/std", replace<std::string>);
    RegisterBenchmark("8/upper/kord", upper<astring>)->Arg(24)->Arg(4096);
    RegisterBenchmark("8/lower/kord", lower<astring>)->Arg(24)->Arg(4096);
    RegisterBenchmark("8/upper latin/kord", upper_latin<astring>)->Arg(4096);
}

void register_width_16() {
    using benchmark::RegisterBenchmark;
    RegisterBenchmark("16/copy/kord", copy<ustring>);
    RegisterBenchmark("16/copy/std", copy<std::u16string>);
    RegisterBenchmark("16/piece of 100/kord", piece<ustring>);
    RegisterBenchmark("16/piece of 100/std", piece<std::u16string>);
    RegisterBenchmark("16/build 100/kord", build<ustring>);
    RegisterBenchmark("16/build 100/std", build<std::u16string>);
    RegisterBenchmark("16/append each/kord", append<ustring, false>);
    RegisterBenchmark("16/append each/std", append<std::u16string, false>);
    RegisterBenchmark("16/append reserved/kord", append<ustring, true>);
    RegisterBenchmark("16/append reserved/std", append<std::u16string, true>);
    RegisterBenchmark("16/upper/kord", upper<ustring>)->Arg(24)->Arg(4096);
    RegisterBenchmark("16/lower/kord", lower<ustring>)->Arg(24)->Arg(4096);
    RegisterBenchmark("16/upper latin/kord", upper_latin<ustring>)->Arg(4096);
}

#ifdef BENCH_ABSL
void register_absl() {
    const auto change = [](auto how) {
        return [how](State& state) {
            std::string text = text_of<std::string>(static_cast<std::size_t>(state.range(0)));
            for (auto _ : state) {
                how(&text);
                DoNotOptimize(text);
            }
        };
    };
    benchmark::RegisterBenchmark("8/upper/absl", change([](std::string* s) { absl::AsciiStrToUpper(s); }))
        ->Arg(24)
        ->Arg(4096);
    benchmark::RegisterBenchmark("8/lower/absl", change([](std::string* s) { absl::AsciiStrToLower(s); }))
        ->Arg(24)
        ->Arg(4096);
}
#endif

#ifdef BENCH_ICU
void register_icu() {
    const auto change = [](auto how) {
        return [how](State& state) {
            const std::u16string text = text_of<std::u16string>(static_cast<std::size_t>(state.range(0)));
            std::u16string result(text.size() + 8, u'\0');
            for (auto _ : state) {
                UErrorCode error = U_ZERO_ERROR;
                how(result.data(), static_cast<int>(result.size()), text.data(), static_cast<int>(text.size()), "",
                    &error);
                DoNotOptimize(result);
            }
        };
    };
    benchmark::RegisterBenchmark("16/upper/icu", change([](auto... a) { u_strToUpper(a...); }))->Arg(24)->Arg(4096);
    benchmark::RegisterBenchmark("16/lower/icu", change([](auto... a) { u_strToLower(a...); }))->Arg(24)->Arg(4096);
}
#endif

#ifdef BENCH_QT
template <class Text>
Text qt_text(std::int64_t n) {
    Text text;
    for (std::int64_t i = 0; i != n; ++i) text += "The quick brown fox, "[i % 21];
    return text;
}

void register_qt() {
    const auto copy = [](State& state) {
        const QString source = qt_text<QString>(100);
        for (auto _ : state) {
            const QString made(source);
            DoNotOptimize(made.data());
        }
    };
    const auto change = [](auto text, auto how) {
        return [text, how](State& state) {
            const auto source = qt_text<decltype(text)>(state.range(0));
            for (auto _ : state) {
                auto made = source;
                made.detach();
                DoNotOptimize(how(std::move(made)));
            }
        };
    };
    using benchmark::RegisterBenchmark;
    RegisterBenchmark("8/copy/QString", copy);
    RegisterBenchmark("16/copy/QString", copy);
    const auto up = [](auto&& s) { return std::move(s).toUpper(); };
    const auto down = [](auto&& s) { return std::move(s).toLower(); };
    RegisterBenchmark("8/upper/QByteArray", change(QByteArray(), up))->Arg(24)->Arg(4096);
    RegisterBenchmark("8/lower/QByteArray", change(QByteArray(), down))->Arg(24)->Arg(4096);
    RegisterBenchmark("16/upper/QString", change(QString(), up))->Arg(24)->Arg(4096);
    RegisterBenchmark("16/lower/QString", change(QString(), down))->Arg(24)->Arg(4096);
}
#endif

const bool registered = [] {
    register_width_8();
    register_width_16();
#ifdef BENCH_ABSL
    register_absl();
#endif
#ifdef BENCH_ICU
    register_icu();
#endif
#ifdef BENCH_QT
    register_qt();
#endif
    return true;
}();

} // namespace
