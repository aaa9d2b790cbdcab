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

    bool refused = false;
    bool too_long = false;
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
            std::size_t i = begin;
            const auto take = [&](std::u32string_view set) {
                return i < t.size() && set.find(t[i]) != set.npos && ++i != 0;
            };
            const auto number = [&]() -> std::uint64_t {
                const std::size_t last = std::min(t.find_first_not_of(U"0123456789", i), t.size());
                double n = 0;
                for (std::size_t k = i; k != last; ++k) n = n * 10 + static_cast<double>(t[k] - '0');
                if (n > 4294967295.0) return 0; // stays where it is, so a digit is the conversion
                i = last;
                return static_cast<std::uint64_t>(n);
            };
            if (take(U"%")) {
                while (take(U" #+-0")) flags += t[i - 1];
                width = number();
                star = take(U"*");
                if (take(U".")) {
                    precision = number();
                    if (*precision == 4294967295) precision.reset();
                    star |= take(U"*");
                }
                while (take(U"hlL")) continue;
                if (i < t.size()) conversion = t[i++];
            }
            end = i;
        }
        bool has(char flag) const { return flags.find(static_cast<unsigned char>(flag)) != flags.npos; }
        bool zeros() const { return has('0') && !has('-'); }
        bool blank() const { return has(' ') && !has('+'); }
        bool hexadecimal() const { return conversion == 'x' || conversion == 'X'; }

        std::uint64_t room() const {
            switch (conversion) {
            case 's': return width;
            case 'c': return std::max<std::uint64_t>(1, width);
            case 'f': return std::max(width, 13 + std::max<std::uint64_t>(19, precision.value_or(6)));
            default: return std::max<std::uint64_t>(sizeof(long) == 8 ? 21 : 12, width);
            }
        }
        std::u32string field(const Value& value) const {
            std::u32string out = std::visit([this](const auto& v) { return render(v); }, value);
            const std::size_t missing = std::max(out.size(), static_cast<std::size_t>(width)) - out.size();
            std::size_t place = has('-') ? out.size() : 0;
            if (zeros() && !out.empty()) {
                if (out[0] == '+' || out[0] == '-' || (blank() && out[0] == ' '))
                    place = 1;
                else if (hexadecimal() && has('#'))
                    place = 2;
            }
            return out.insert(place, missing, zeros() ? '0' : ' ');
        }

        static std::u32string wide(const std::string& s) { return {s.begin(), s.end()}; }
        std::u32string render(long n) const {
            const std::string sign = n < 0 ? "-" : has('+') ? "+" : blank() ? " " : "";
            return wide(sign +
                        std::to_string(n < 0 ? 0 - static_cast<unsigned long>(n) : static_cast<unsigned long>(n)));
        }
        std::u32string render(unsigned long n) const {
            char digits[24];
            std::snprintf(digits, sizeof digits, conversion == 'u' ? "%lu" : conversion == 'x' ? "%lx" : "%lX", n);
            const std::string prefix = !hexadecimal() || !has('#') ? "" : conversion == 'x' ? "0x" : "0X";
            return wide(prefix + digits);
        }
        std::u32string render(double x) const {
            const std::string digits = real_model(x, static_cast<int>(precision.value_or(6)), true);
            const std::string sign = blank() && x >= 0 ? " " : "";
            return wide(sign + (has('+') || digits[0] == '-' ? digits : digits.substr(1)));
        }
        std::u32string render(char32_t c) const { return {c}; }
        std::u32string render(const std::u32string& s) const {
            return s.substr(0, static_cast<std::size_t>(precision.value_or(s.size())));
        }
    };
};

#endif
