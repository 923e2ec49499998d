#pragma once

#include <functional>
#include <memory>
#include <string_view>

namespace nettlecap {

/// A regular expression in ICU's syntax over UTF-8, compiled once. A pattern that does not
/// compile aborts: it is a mistake in the program. Main thread only, one search at a time.
class Expression {
public:
    enum class Case { sensitive, insensitive };

    explicit Expression(std::string_view pattern, Case letters = Case::sensitive);
    ~Expression();
    Expression(const Expression&) = delete;
    Expression& operator=(const Expression&) = delete;

    bool isFoundIn(std::string_view text) const;
    /// The matches in order, none within another, until `visit` returns false. It gets copies.
    void forEachMatch(std::string_view text, const std::function<bool(std::string_view)>& visit) const;

private:
    struct Compiled;
    std::unique_ptr<const Compiled> compiled_;
};

}  // namespace nettlecap
