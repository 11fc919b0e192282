// A value, or the reason why there is none, in words for the user.
#pragma once

#include <QString>
#include <utility>
#include <variant>

namespace lirovan::platform {

struct Error {
    QString message;  ///< Turkish, complete enough to be shown as it is
};

/// What a function that can fail returns. `if (!result) show(result.error().message)`.
template <class T>
class [[nodiscard]] Result {
  public:
    Result(T value) : content_(std::move(value)) {}
    Result(Error error) : content_(std::move(error)) {}

    explicit operator bool() const { return std::holds_alternative<T>(content_); }
    T& value() { return std::get<T>(content_); }
    const T& value() const { return std::get<T>(content_); }
    T& operator*() { return value(); }
    const T& operator*() const { return value(); }
    T* operator->() { return &value(); }
    const T* operator->() const { return &value(); }
    const Error& error() const { return std::get<Error>(content_); }

  private:
    std::variant<T, Error> content_;
};

template <>
class [[nodiscard]] Result<void> {
  public:
    Result() = default;
    Result(Error error) : error_(std::move(error)), failed_(true) {}

    explicit operator bool() const { return !failed_; }
    const Error& error() const { return error_; }

  private:
    Error error_;
    bool failed_ = false;
};

}  // namespace lirovan::platform
