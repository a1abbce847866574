#pragma once

#include <string>
#include <utility>
#include <variant>

namespace sonnel {

/// What went wrong: a number to show and one sentence for the user.
struct Error {
    int number = 0;
    std::string text;
};

/// A value of type T, or the error that stood in its way.
template <class T>
class [[nodiscard]] Result {
  public:
    Result(T value) : content_(std::move(value)) {}      // NOLINT(google-explicit-constructor)
    Result(Error error) : content_(std::move(error)) {}  // NOLINT(google-explicit-constructor)

    explicit operator bool() const { return std::holds_alternative<T>(content_); }
    T& operator*() { return std::get<T>(content_); }
    const T& operator*() const { return std::get<T>(content_); }
    T* operator->() { return &std::get<T>(content_); }
    const T* operator->() const { return &std::get<T>(content_); }
    [[nodiscard]] const Error& error() const { return std::get<Error>(content_); }

  private:
    std::variant<T, Error> content_;
};

}  // namespace sonnel
