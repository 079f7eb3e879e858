#include "model_text.h"

#include <algorithm>

namespace kova_import::bench {

ModelText &ModelText::text(std::string_view text) {
    std::copy(text.begin(), text.end(), room(text.size()));
    return *this;
}

ModelText &ModelText::text(std::string_view text, std::size_t width) {
    char *const field = room(std::max(text.size(), width));
    std::fill_n(std::copy(text.begin(), text.end(), field),
                std::max(text.size(), width) - text.size(), ' ');
    return *this;
}

ModelText &ModelText::number(std::int64_t value, std::size_t width) {
    return number(Decimal{value, 0}, width);
}

ModelText &ModelText::number(Decimal number, std::size_t width) {
    std::array<char, most_digits> digits{};
    char *const end = digits.data() + digits.size();
    char *start = end;
    const bool is_negative = number.scaled < 0;
    auto rest = static_cast<std::uint64_t>(is_negative ? -number.scaled : number.scaled);
    for (int i = 0; i < number.decimals; ++i, rest /= 10)
        *--start = static_cast<char>('0' + rest % 10);
    if (number.decimals > 0)
        *--start = '.';
    do
        *--start = static_cast<char>('0' + rest % 10);
    while ((rest /= 10) != 0);
    if (is_negative)
        *--start = '-';
    const auto size = static_cast<std::size_t>(end - start);
    const std::size_t blanks = width > size ? width - size : 0;
    char *const field = room(blanks + size);
    std::copy(start, end, std::fill_n(field, blanks, ' '));
    return *this;
}

void ModelText::count(std::int64_t count, std::string_view remark) {
    number(count, 10).text("   ").line(remark);
}

bool ModelText::finish() {
    write_out();
    return std::fflush(file_) == 0 && !failed_;
}

void ModelText::write_out() {
    if (std::fwrite(buffer_.data(), 1, size_, file_) != size_)
        failed_ = true;
    written_ += static_cast<std::int64_t>(size_);
    size_ = 0;
}

} // namespace kova_import::bench
