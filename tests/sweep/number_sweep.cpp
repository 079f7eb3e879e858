// Compares the fast conversion of decimals with std::from_chars, bit by bit.
//
// number_sweep all
//     every decimal of up to 7 digits: the point in every place, and every
//     exponent that the fast conversion takes
// number_sweep random COUNT [SEED]
//     random decimals of up to 15 digits with points and exponents
//
// Both also send a part of the numbers the long way.

#include "control/number_text.h"
#include "control/plain_number.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string_view>
#include <thread>
#include <vector>

namespace {

using namespace kova_import;

/// What one thread has found out.
struct Tally {
    std::uint64_t compared = 0;
    std::uint64_t plain = 0; ///< of them, those that the fast conversion took
    std::uint64_t different = 0;
};

void complain(std::string_view text) {
    std::fprintf(stderr, "different: %.*s\n", static_cast<int>(text.size()), text.data());
}

/// Compares one text; every 64th goes the long way too.
void compare(std::string_view text, Tally &tally) {
    float expected = 0;
    std::from_chars(text.data(), text.data() + text.size(), expected);
    const auto expected_bits = std::bit_cast<std::uint32_t>(expected);

    const char *first = text.data();
    float value = 0;
    if (take_plain_number(first, text.data() + text.size(), value)) {
        ++tally.plain;
        if (std::bit_cast<std::uint32_t>(value) != expected_bits ||
            first != text.data() + text.size()) {
            ++tally.different;
            complain(text);
        }
    }
    if (++tally.compared % 64 == 0) {
        NumberText number;
        for (const char character : text)
            number.push(character);
        const auto long_way = number.real();
        if (!long_way || std::bit_cast<std::uint32_t>(*long_way) != expected_bits) {
            ++tally.different;
            complain(text);
        }
    }
}

/// A decimal as text, built in place.
class Decimal {
  public:
    void start(std::uint64_t digits) {
        size_ = length_to(std::to_chars(text_.data(), text_.data() + 24, digits).ptr);
    }
    [[nodiscard]] std::size_t size() const { return size_; }
    void insert_point(std::size_t place) {
        std::memmove(text_.data() + place + 1, text_.data() + place, size_ - place);
        text_[place] = '.';
        ++size_;
    }
    void append_exponent(int exponent) {
        text_[size_++] = 'e';
        char *const end = text_.data() + size_;
        size_ = length_to(std::to_chars(end, end + 8, exponent).ptr);
    }
    [[nodiscard]] std::string_view view() const { return {text_.data(), size_}; }

  private:
    [[nodiscard]] std::size_t length_to(const char *end) const {
        return static_cast<std::size_t>(end - text_.data());
    }

    std::array<char, 40> text_{};
    std::size_t size_ = 0;
};

void sweep(std::uint64_t first, std::uint64_t step, Tally &tally) {
    constexpr std::uint64_t all_of_seven_digits = 10000000;
    for (std::uint64_t digits = first; digits < all_of_seven_digits; digits += step) {
        Decimal decimal;
        decimal.start(digits);
        const std::size_t size = decimal.size();
        for (std::size_t place = 0; place <= size; ++place) {
            Decimal with_point = decimal;
            with_point.insert_point(place);
            compare(with_point.view(), tally);
        }
        for (int exponent = -22; exponent <= 22; ++exponent) {
            Decimal with_exponent = decimal;
            with_exponent.append_exponent(exponent);
            compare(with_exponent.view(), tally);
        }
    }
}

void try_random(std::uint64_t seed, std::uint64_t count, Tally &tally) {
    std::mt19937_64 random(seed);
    constexpr std::array<std::uint64_t, 4> ranges = {100000000, 10000000000, 1000000000000,
                                                     1000000000000000};
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::uint64_t choice = random();
        Decimal decimal;
        decimal.start(random() % ranges[choice % ranges.size()]);
        if ((choice & 0x10) != 0)
            decimal.insert_point((choice >> 8) % (decimal.size() + 1));
        if ((choice & 0x20) != 0)
            decimal.append_exponent(static_cast<int>((choice >> 16) % 45) - 22);
        compare(decimal.view(), tally);
    }
}

} // namespace

int main(int argument_count, char **arguments) {
    const std::string_view mode = argument_count > 1 ? arguments[1] : "";
    const bool all = mode == "all" && argument_count == 2;
    const bool has_seed = argument_count == 4;
    if (!all && !(mode == "random" && (argument_count == 3 || has_seed))) {
        std::fputs("usage: number_sweep all | number_sweep random COUNT [SEED]\n", stderr);
        return 2;
    }
    const std::uint64_t count = all ? 0 : std::strtoull(arguments[2], nullptr, 10);
    const std::uint64_t seed = has_seed ? std::strtoull(arguments[3], nullptr, 10) : 0;
    const std::size_t thread_count = std::max(1U, std::thread::hardware_concurrency());
    std::vector<Tally> tallies(thread_count);
    {
        std::vector<std::jthread> threads;
        for (std::size_t i = 0; i < thread_count; ++i)
            threads.emplace_back([&, i] {
                Tally tally; // of its own, so that the threads do not share cache lines
                if (all)
                    sweep(i, thread_count, tally);
                else
                    try_random(seed * thread_count + i + 1, count / thread_count, tally);
                tallies[i] = tally;
            });
    }
    Tally sum;
    for (const Tally &tally : tallies) {
        sum.compared += tally.compared;
        sum.plain += tally.plain;
        sum.different += tally.different;
    }
    std::printf("%llu decimals compared, %llu of them converted the fast way, %llu different\n",
                static_cast<unsigned long long>(sum.compared),
                static_cast<unsigned long long>(sum.plain),
                static_cast<unsigned long long>(sum.different));
    return sum.different == 0 && sum.plain > sum.compared / 2 ? 0 : 1;
}
