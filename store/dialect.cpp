#include "store/dialect.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>
#include <string_view>

#include "store/sqlite.h"

namespace guanchao {

namespace {

std::string_view textOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return text ? std::string_view(text, static_cast<size_t>(sqlite3_value_bytes(value)))
                : std::string_view();
}

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool continuesCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// The position behind the UTF-8 character at `at`.
size_t nextCharacter(std::string_view text, size_t at) {
    ++at;
    while (at < text.size() && continuesCharacter(text[at])) {
        ++at;
    }
    return at;
}

// Matches from left to right. On a mismatch the last any-string wildcard takes one character more;
// an earlier wildcard never has to be tried again, so the time is bounded by the two lengths.
class LikeMatch {
public:
    LikeMatch(std::string_view pattern, std::string_view text, char escape)
        : pattern_(pattern), text_(text), escape_(escape) {}

    bool matches() {
        while (text_.size() > at_) {
            if (!stepWildcard() && !stepCharacter() && !stepBack()) {
                return false;
            }
        }
        while (isAnyString(patternAt_)) {
            ++patternAt_;
        }
        return patternAt_ == pattern_.size();
    }

private:
    bool isAnyString(size_t at) const {
        return at < pattern_.size() && (pattern_[at] == '*' || pattern_[at] == '%') &&
               pattern_[at] != escape_;
    }

    bool stepWildcard() {
        if (!isAnyString(patternAt_)) {
            return false;
        }
        wildcard_ = ++patternAt_;
        wildcardText_ = at_;
        return true;
    }

    bool stepCharacter() {
        if (patternAt_ >= pattern_.size()) {
            return false;
        }
        const bool escaped =
            escape_ != '\0' && pattern_[patternAt_] == escape_ && patternAt_ + 1 < pattern_.size();
        const size_t wanted = patternAt_ + (escaped ? 1 : 0);
        if (!escaped && pattern_[wanted] == '_') {
            at_ = nextCharacter(text_, at_);
        } else if (lowered(pattern_[wanted]) == lowered(text_[at_])) {
            ++at_;
        } else {
            return false;
        }
        patternAt_ = wanted + 1;
        return true;
    }

    bool stepBack() {
        if (wildcard_ == std::string_view::npos) {
            return false;
        }
        wildcardText_ = nextCharacter(text_, wildcardText_);
        at_ = wildcardText_;
        patternAt_ = wildcard_;
        return true;
    }

    std::string_view pattern_;
    std::string_view text_;
    char escape_;
    size_t patternAt_ = 0;
    size_t at_ = 0;
    size_t wildcard_ = std::string_view::npos;
    size_t wildcardText_ = 0;
};

void like(sqlite3_context* context, int count, sqlite3_value** arguments) {
    if (sqlite3_value_type(arguments[0]) == SQLITE_NULL ||
        sqlite3_value_type(arguments[1]) == SQLITE_NULL) {
        return;
    }
    const std::string_view escape = count > 2 ? textOf(arguments[2]) : std::string_view();
    if (count > 2 && escape.size() != 1) {
        sqlite3_result_error(context, "ESCAPE expression must be a single character", -1);
        return;
    }
    LikeMatch match(textOf(arguments[0]), textOf(arguments[1]), count > 2 ? escape[0] : '\0');
    sqlite3_result_int(context, match.matches() ? 1 : 0);
}

void iif(sqlite3_context* context, int, sqlite3_value** arguments) {
    const bool truth = sqlite3_value_double(arguments[0]) != 0;
    sqlite3_result_value(context, arguments[truth ? 1 : 2]);
}

// Forms of a time text: 'd' a digit, anything else itself.
constexpr std::string_view dayForm = "dddd-dd-dd";
constexpr std::string_view momentForm = "dddd-dd-dd dd:dd:dd";

bool hasForm(std::string_view text, std::string_view form) {
    if (text.size() != form.size()) {
        return false;
    }
    for (size_t at = 0; at < form.size(); ++at) {
        const bool digit = text[at] >= '0' && text[at] <= '9';
        if (form[at] == 'd' ? !digit : text[at] != form[at]) {
            return false;
        }
    }
    return true;
}

int twoDigits(std::string_view text, size_t at) {
    return (text[at] - '0') * 10 + (text[at + 1] - '0');
}

// True for the texts that are given back as they stand, 30 February too: some versions of the
// library carry it over into March, and an index made by one must serve the others.
bool isPlainTime(std::string_view text) {
    const bool moment = hasForm(text, momentForm);
    if (!moment && !hasForm(text, dayForm)) {
        return false;
    }
    const int month = twoDigits(text, 5);
    const int day = twoDigits(text, 8);
    if (month < 1 || month > 12 || day < 1 || day > 31) {
        return false;
    }
    return !moment ||
           (twoDigits(text, 11) < 24 && twoDigits(text, 14) < 60 && twoDigits(text, 17) < 60);
}

// Empty for a number, which the built-in functions read as a Julian day.
std::string_view timeTextOf(sqlite3_value* value) {
    return sqlite3_value_type(value) == SQLITE_TEXT ? textOf(value) : std::string_view();
}

// The library's own functions, on a connection of their own where they are not replaced.
class BuiltInTime {
public:
    explicit BuiltInTime(const char* statement) {
        sqlite3_open(":memory:", &handle_);
        sqlite3_prepare_v2(handle_, statement, -1, &statement_, nullptr);
    }
    ~BuiltInTime() {
        sqlite3_finalize(statement_);
        sqlite3_close(handle_);
    }
    BuiltInTime(const BuiltInTime&) = delete;
    BuiltInTime& operator=(const BuiltInTime&) = delete;

    void answer(sqlite3_context* context, sqlite3_value* value) {
        sqlite3_bind_value(statement_, 1, value);
        if (sqlite3_step(statement_) == SQLITE_ROW) {
            sqlite3_result_value(context, sqlite3_column_value(statement_, 0));
        }
        sqlite3_reset(statement_);
    }

private:
    sqlite3* handle_ = nullptr;
    sqlite3_stmt* statement_ = nullptr;
};

void resultText(sqlite3_context* context, std::string_view text) {
    sqlite3_result_text(context, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

void date(sqlite3_context* context, int, sqlite3_value** arguments) {
    thread_local BuiltInTime builtIn("select date(?1)");
    const std::string_view day = dayOfPlainTime(timeTextOf(arguments[0]));
    if (!day.empty()) {
        resultText(context, day);
    } else {
        builtIn.answer(context, arguments[0]);
    }
}

void datetime(sqlite3_context* context, int, sqlite3_value** arguments) {
    thread_local BuiltInTime builtIn("select datetime(?1)");
    const std::string_view text = timeTextOf(arguments[0]);
    if (!isPlainTime(text)) {
        builtIn.answer(context, arguments[0]);
    } else if (text.size() == momentForm.size()) {
        resultText(context, text);
    } else {
        resultText(context, std::string(text) + " 00:00:00");
    }
}

constexpr int mostDecimals = 30;

void round(sqlite3_context* context, int count, sqlite3_value** arguments) {
    for (int at = 0; at < count; ++at) {
        if (sqlite3_value_type(arguments[at]) == SQLITE_NULL) {
            return;
        }
    }
    const int decimals = count > 1 ? sqlite3_value_int(arguments[1]) : 0;
    sqlite3_result_double(context, roundedInStatements(sqlite3_value_double(arguments[0]),
                                                       std::clamp(decimals, 0, mostDecimals)));
}

struct Mean {
    double sum;
    sqlite3_int64 count;
};

// Added as they come, without a correction of what the sum loses.
void addToMean(sqlite3_context* context, int, sqlite3_value** arguments) {
    auto* mean = static_cast<Mean*>(sqlite3_aggregate_context(context, sizeof(Mean)));
    if (mean && sqlite3_value_type(arguments[0]) != SQLITE_NULL) {
        mean->sum += sqlite3_value_double(arguments[0]);
        ++mean->count;
    }
}

void takeMean(sqlite3_context* context) {
    const auto* mean = static_cast<Mean*>(sqlite3_aggregate_context(context, 0));
    if (mean && mean->count > 0) {
        sqlite3_result_double(context, mean->sum / static_cast<double>(mean->count));
    }
}

constexpr int functionFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;

void check(sqlite3* handle, int result) {
    if (result != SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(handle));
    }
}

using Function = void (*)(sqlite3_context*, int, sqlite3_value**);

void registerFunction(sqlite3* handle, const char* name, int arguments, Function function) {
    check(handle, sqlite3_create_function_v2(handle, name, arguments, functionFlags, nullptr,
                                             function, nullptr, nullptr, nullptr));
}

void registerMean(sqlite3* handle) {
    check(handle, sqlite3_create_function_v2(handle, "avg", 1, functionFlags, nullptr, nullptr,
                                             addToMean, takeMean, nullptr));
}

}  // namespace

std::string_view dayOfPlainTime(std::string_view text) {
    return isPlainTime(text) ? text.substr(0, dayForm.size()) : std::string_view();
}

// The product is exact in the wider type, so that nothing but the value itself decides on which
// side of the half it lies.
double roundedInStatements(double value, int decimals) {
    const double scale = std::pow(10.0, decimals);
    const long double scaled = std::abs(static_cast<long double>(value)) * scale;
    constexpr long double firstWithoutFraction = 1LL << 53;
    if (!(scaled < firstWithoutFraction)) {
        return value;
    }
    return std::copysign(static_cast<double>(std::floor(scaled + 0.5L)) / scale, value);
}

void registerDialect(sqlite3* handle) {
    registerFunction(handle, "like", 2, like);
    registerFunction(handle, "like", 3, like);
    registerFunction(handle, "iif", 3, iif);
    registerFunction(handle, "date", 1, date);
    registerFunction(handle, "datetime", 1, datetime);
    registerFunction(handle, "round", 1, round);
    registerFunction(handle, "round", 2, round);
    registerMean(handle);
}

}  // namespace guanchao
