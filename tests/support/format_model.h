#ifndef KORD_TESTS_FORMAT_MODEL_H
#define KORD_TESTS_FORMAT_MODEL_H

#include "support/real_model.h"

#include <algorithm>
#include <optional>
#include <variant>
#include <vector>

/// The rules of typed templates once more, told plainly: what comes out, and for how many characters room is made.
struct FormatModel {
    using Value = std::variant<long, unsigned long, double, char32_t, std::u32string>;
    static constexpr std::u32string_view conversions[] = {U"di", U"uxX", U"f", U"c", U"s"}; // by kind of value

    bool refused = false, too_long = false;
    std::uint64_t estimate = 0;
    std::u32string text;

    FormatModel(const std::u32string& tmpl, const std::vector<Value>& values) {
        auto value = values.begin();
        for (std::size_t from = 0;;) {
            const Placeholder p(tmpl, from);
            refused |= p.star;
            text.append(tmpl, from, p.begin - from);
            estimate += p.begin - from;
            from = p.end;
            if (p.conversion == 0) break; // what follows is left out
            if (p.conversion == '%') {
                text += '%';
                estimate += 1 + (p.end - p.begin);
                continue;
            }
            refused |= value == values.end() || conversions[value->index()].find(p.conversion) == text.npos;
            if (refused) return;
            estimate += p.room();
            if (p.width <= 0x100000) text += p.field(*value); // the others are too long anyway
            ++value;
        }
        refused |= value != values.end();
        for (const Value& v : values) estimate += v.index() == 4 ? std::get<4>(v).size() : 0;
        too_long = !refused && estimate > 0x100000;
    }

  private:
    struct Placeholder {
        std::u32string flags;
        std::uint64_t width = 0;
        std::optional<std::uint64_t> precision;
        bool star = false;
        char32_t conversion = 0; // 0 if there is none: the text ends here
        std::size_t begin, end;

        Placeholder(const std::u32string& t, std::size_t from) : begin(std::min(t.find('%', from), t.size())) {
            end = begin;
            const auto take = [&](std::u32string_view set) {
                return end < t.size() && set.find(t[end]) != set.npos && ++end != 0;
            };
            const auto number = [&]() -> std::uint64_t {
                const std::size_t first = end;
                double n = 0;
                while (take(U"0123456789")) n = n * 10 + static_cast<double>(t[end - 1] - '0');
                if (n <= 4294967295.0) return static_cast<std::uint64_t>(n);
                end = first; // so a digit is the conversion
                return 0;
            };
            if (!take(U"%")) return;
            while (take(U" #+-0")) flags += t[end - 1];
            width = number();
            star = take(U"*");
            if (take(U".")) {
                precision = number();
                if (*precision == 4294967295) precision.reset();
                star |= take(U"*");
            }
            while (take(U"hlL")) continue;
            if (end < t.size()) conversion = t[end++];
        }
        bool has(char32_t flag) const { return flags.find(flag) != flags.npos; }
        bool prefixed() const { return (conversion == 'x' || conversion == 'X') && has('#'); }

        std::uint64_t room() const {
            if (conversion == 'f') return std::max(width, 13 + std::max<std::uint64_t>(19, precision.value_or(6)));
            const unsigned int integer = sizeof(long) == 8 ? 21 : 12;
            return std::max<std::uint64_t>(width, conversion == 's' ? 0 : conversion == 'c' ? 1 : integer);
        }
        std::u32string field(const Value& value) const {
            std::u32string out = std::visit([this](const auto& v) { return render(v); }, value);
            const std::size_t missing = std::max(out.size(), static_cast<std::size_t>(width)) - out.size();
            if (has('-')) return out.append(missing, ' ');
            if (!has('0')) return out.insert(0, missing, ' ');
            const bool sign = out[0] == '+' || out[0] == '-' || (out[0] == ' ' && !blank(true).empty());
            return out.insert(out.empty() ? 0 : sign ? 1 : prefixed() ? 2 : 0, missing, '0');
        }
        std::string blank(bool positive) const { return positive && has(' ') && !has('+') ? " " : ""; }

        static std::u32string wide(const std::string& s) { return {s.begin(), s.end()}; }
        std::u32string render(long n) const {
            const unsigned long u = static_cast<unsigned long>(n);
            return wide((n < 0 ? "-" : has('+') ? "+" : blank(true)) + std::to_string(n < 0 ? 0 - u : u));
        }
        std::u32string render(unsigned long n) const {
            char digits[24];
            const char* const forms[] = {"%lu", "%lx", "%lX"};
            std::snprintf(digits, sizeof digits, forms[conversion == 'u' ? 0 : conversion == 'x' ? 1 : 2], n);
            const std::u32string prefix{U'0', conversion};
            return prefixed() ? prefix + wide(digits) : wide(digits);
        }
        std::u32string render(double x) const {
            const std::string digits = real_model(x, static_cast<int>(precision.value_or(6)), true);
            return wide(blank(x >= 0) + digits.substr(digits[0] == '+' && !has('+')));
        }
        std::u32string render(char32_t c) const { return {c}; }
        std::u32string render(const std::u32string& s) const {
            return s.substr(0, static_cast<std::size_t>(precision.value_or(s.size())));
        }
    };
};

#endif
