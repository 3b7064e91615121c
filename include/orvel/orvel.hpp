// include/orvel/orvel.hpp - the library for C++17: one name over the precisions, values for addresses, errors
// as values
//
// Every routine has an overload in namespace orvel. Its parameters are the inputs in the order of the
// routine, less what the arrays tell: lengths, leading dimensions and increments. Outputs are returned, one
// as it is, several as a structure whose members bear the names of the arguments; arrays that a routine
// changes are changed in place, and the kernels write into the arrays that they are given. Scratch is worked
// out.
//
//     orvel::matrix<double> a(2, 2, {4, 1, 2, 3});                  // by columns
//     std::vector<double> x = orvel::lsarg(a, b).value();           // throws orvel::error
//     const auto area = orvel::qdags([&](double t) { return k * t; }, 0, 3);
//     if (!area.ok()) log(area.routine(), area.code(), area.text());
//
// Nothing is printed and nothing stops, whatever the switches of the thread say; they stay as they are.
// Arguments that do not fit together are refused before the routine is entered, with severity terminal and
// code 0. A user's function may capture, throw, and call the library; it runs on the calling thread.
#ifndef ORVEL_ORVEL_HPP
#define ORVEL_ORVEL_HPP

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "orvel/orvel.h"

namespace orvel {

// ---- results -----------------------------------------------------------------------------

enum class severity : std::int32_t {
    none,
    note,
    alert,
    warning,
    fatal,
    terminal,
    prompt_warning,
    prompt_fatal
};

constexpr bool is_failure(severity s) noexcept
{
    return s == severity::fatal || s == severity::terminal || s == severity::prompt_fatal;
}

// What value() throws.
class error : public std::runtime_error {
public:
    error(orvel::severity severity, std::int32_t code, std::string routine, std::string text)
        : std::runtime_error(routine + ", error " + std::to_string(code) + ": " + text), severity_(severity),
          code_(code),
          names_(std::make_shared<std::pair<std::string, std::string>>(std::move(routine), std::move(text)))
    {}

    orvel::severity severity() const noexcept { return severity_; }
    std::int32_t code() const noexcept { return code_; }
    const std::string& routine() const noexcept { return names_->first; }
    const std::string& text() const noexcept { return names_->second; }

private:
    orvel::severity severity_;
    std::int32_t code_;
    std::shared_ptr<const std::pair<std::string, std::string>> names_;  // so that a copy cannot throw
};

// What a call has posted: the last error, and the texts of all its messages, a line each.
class outcome {
public:
    orvel::severity severity() const noexcept { return error_ ? error_->severity() : orvel::severity::none; }
    std::int32_t code() const noexcept { return error_ ? error_->code() : 0; }
    std::string_view routine() const noexcept { return error_ ? std::string_view(error_->routine()) : ""; }
    std::string_view text() const noexcept { return error_ ? std::string_view(error_->text()) : ""; }

    // No error, or a note, an alert or a warning beside a value that can be used.
    bool ok() const noexcept { return !is_failure(severity()); }
    explicit operator bool() const noexcept { return ok(); }

    void post(orvel::severity severity, std::int32_t code, std::string routine, std::string text)
    {
        error_ = std::make_shared<error>(severity, code, std::move(routine), std::move(text));
    }

protected:
    void throw_failure() const
    {
        if (!ok()) throw *error_;
    }

private:
    std::shared_ptr<const error> error_;
};

template <class T>
class [[nodiscard]] result : public outcome {
public:
    using value_type = T;

    explicit result(T value) : value_(std::move(value)) {}

    const T& value() const&
    {
        throw_failure();
        return value_;
    }
    T value() &&  // no reference, so that a loop over the value of a call holds it
    {
        throw_failure();
        return std::move(value_);
    }

    // What the routine has left in its outputs, also after an error; its description tells what that is.
    const T& outputs() const& noexcept { return value_; }
    T outputs() && { return std::move(value_); }

private:
    T value_;
};

template <>
class result<void> : public outcome {
public:
    using value_type = void;
    void value() const { throw_failure(); }
};

// ---- arrays -----------------------------------------------------------------------------

namespace detail {

template <class C>
using element_of = std::remove_pointer_t<decltype(std::data(std::declval<C&>()))>;

template <class C, class T, class = void>
struct holds : std::false_type {};
template <class C, class T>
struct holds<C, T, std::void_t<element_of<C>, decltype(std::size(std::declval<C&>()))>>
    : std::is_convertible<element_of<C> (*)[], T (*)[]> {};

template <class C, class = void>
struct has_rows : std::false_type {};
template <class C>
struct has_rows<C, std::void_t<decltype(std::declval<C&>().rows())>> : std::true_type {};

// Vectors of matrix libraries have rows and columns, too, and say so.
template <class C, class = void>
struct is_vector : std::bool_constant<!has_rows<C>::value> {};
template <class C>
struct is_vector<C, std::enable_if_t<bool(std::remove_reference_t<C>::IsVectorAtCompileTime)>>
    : std::true_type {};

}  // namespace detail

template <class T>
class vector_view;

namespace detail {

template <class C>
struct is_view : std::false_type {};
template <class T>
struct is_view<vector_view<T>> : std::true_type {};

// What serves as a vector. Views are converted on their own, with their step.
template <class C, class T>
inline constexpr bool is_vector_of =
    holds<C, T>::value&& is_vector<C>::value && !is_view<std::remove_cv_t<std::remove_reference_t<C>>>::value;

}  // namespace detail

// Elements at equal distances: everything that has data() and size(), and parts of it. A negative step goes
// down.
template <class T>
class vector_view {
public:
    using element_type = T;

    vector_view(T* first, std::size_t size, std::ptrdiff_t step = 1) noexcept
        : first_(first), size_(size), step_(step)
    {}
    template <class C, std::enable_if_t<detail::is_vector_of<C, T>, int> = 0>
    vector_view(C&& container) noexcept : vector_view(std::data(container), std::size(container))
    {}
    template <class U, std::enable_if_t<std::is_convertible_v<U (*)[], T (*)[]>, int> = 0>
    vector_view(const vector_view<U>& other) noexcept : vector_view(other.data(), other.size(), other.step())
    {}

    T* data() const noexcept { return first_; }
    std::size_t size() const noexcept { return size_; }
    std::ptrdiff_t step() const noexcept { return step_; }
    T& operator[](std::size_t k) const noexcept { return first_[static_cast<std::ptrdiff_t>(k) * step_]; }

    // Each element whose index is a multiple of k, and the elements from the last to the first.
    vector_view every(std::size_t k) const noexcept
    {
        return {first_, k == 0 ? 0 : (size_ + k - 1) / k, step_ * static_cast<std::ptrdiff_t>(k)};
    }
    vector_view reversed() const noexcept
    {
        return {size_ == 0 ? first_ : &(*this)[size_ - 1], size_, -step_};
    }

private:
    T* first_;
    std::size_t size_;
    std::ptrdiff_t step_;
};

template <class C>
vector_view(C&&) -> vector_view<detail::element_of<C>>;

// A matrix stored by columns, or a block of one; also everything that has data(), rows() and cols() or
// columns().
template <class T>
class matrix_view {
public:
    using element_type = T;

    // The leading dimension is the distance of two columns, that of the rows unless given.
    matrix_view(T* data, std::size_t rows, std::size_t columns, std::size_t leading = 0) noexcept
        : data_(data), rows_(rows), columns_(columns), leading_(leading == 0 ? rows : leading)
    {}
    template <class C, std::enable_if_t<detail::holds<C, T>::value && !detail::has_rows<C>::value, int> = 0>
    matrix_view(C&& container, std::size_t rows, std::size_t columns, std::size_t leading = 0) noexcept
        : matrix_view(std::data(container), rows, columns, leading)
    {
        room_ = std::size(container);
    }
    template <class U, std::enable_if_t<std::is_convertible_v<U (*)[], T (*)[]>, int> = 0>
    matrix_view(const matrix_view<U>& other) noexcept
        : data_(other.data()), rows_(other.rows()), columns_(other.columns()), leading_(other.leading()),
          room_(other.room())
    {}
    template <class C, std::enable_if_t<detail::has_rows<C>::value && detail::holds<C, T>::value, int> = 0>
    matrix_view(C&& matrix) noexcept
        : matrix_view(std::data(matrix), static_cast<std::size_t>(matrix.rows()), columns_of(matrix),
                      leading_of(matrix))
    {}

    T* data() const noexcept { return data_; }
    std::size_t rows() const noexcept { return rows_; }
    std::size_t columns() const noexcept { return columns_; }
    std::size_t leading() const noexcept { return leading_; }
    std::size_t room() const noexcept { return room_; }
    T& operator()(std::size_t i, std::size_t j) const noexcept { return data_[i + j * leading_]; }

    vector_view<T> column(std::size_t j) const noexcept { return {data_ + j * leading_, rows_}; }
    vector_view<T> row(std::size_t i) const noexcept
    {
        return {data_ + i, columns_, static_cast<std::ptrdiff_t>(leading_)};
    }
    matrix_view block(std::size_t i, std::size_t j, std::size_t rows, std::size_t columns) const noexcept
    {
        return {data_ + i + j * leading_, rows, columns, leading_};
    }

    // The elements lie inside what holds them.
    bool fits() const noexcept
    {
        return leading_ >= rows_ &&
               (rows_ == 0 || columns_ == 0 ||
                (rows_ <= room_ && (columns_ == 1 || (room_ - rows_) / (columns_ - 1) >= leading_)));
    }

private:
    template <class C>
    static std::size_t columns_of(const C& matrix)
    {
        if constexpr (is_by_rows<C>::value)
            static_assert(!is_by_rows<C>::value, "the matrix is stored by rows; the library takes columns");
        else if constexpr (has_columns<C>::value)
            return static_cast<std::size_t>(matrix.columns());
        else
            return static_cast<std::size_t>(matrix.cols());
    }
    template <class C>
    static std::size_t leading_of(const C& matrix)
    {
        if constexpr (has_stride<C>::value)
            return static_cast<std::size_t>(matrix.outerStride());
        else
            return static_cast<std::size_t>(matrix.rows());
    }
    template <class C, class = void>
    struct has_columns : std::false_type {};
    template <class C>
    struct has_columns<C, std::void_t<decltype(std::declval<C&>().columns())>> : std::true_type {};
    template <class C, class = void>
    struct has_stride : std::false_type {};
    template <class C>
    struct has_stride<C, std::void_t<decltype(std::declval<C&>().outerStride())>> : std::true_type {};
    template <class C, class = void>
    struct is_by_rows : std::false_type {};
    template <class C>
    struct is_by_rows<C, std::enable_if_t<bool(C::IsRowMajor)>> : std::true_type {};

    T* data_;
    std::size_t rows_, columns_, leading_;
    std::size_t room_ = std::numeric_limits<std::size_t>::max();
};

template <class C>
matrix_view(C&&, std::size_t, std::size_t) -> matrix_view<detail::element_of<C>>;
template <class C>
matrix_view(C&&, std::size_t, std::size_t, std::size_t) -> matrix_view<detail::element_of<C>>;

// A matrix that owns its elements.
template <class T>
class matrix {
public:
    using value_type = T;

    matrix() = default;
    matrix(std::size_t rows, std::size_t columns) : rows_(rows), columns_(columns), elements_(rows * columns)
    {}
    // The elements column by column.
    matrix(std::size_t rows, std::size_t columns, std::vector<T> elements)
        : rows_(rows), columns_(columns), elements_(std::move(elements))
    {
        if (elements_.size() != rows * columns)
            throw std::invalid_argument("orvel::matrix: number of elements");
    }

    T* data() noexcept { return elements_.data(); }
    const T* data() const noexcept { return elements_.data(); }
    std::size_t size() const noexcept { return elements_.size(); }
    std::size_t rows() const noexcept { return rows_; }
    std::size_t columns() const noexcept { return columns_; }
    T& operator()(std::size_t i, std::size_t j) noexcept { return elements_[i + j * rows_]; }
    const T& operator()(std::size_t i, std::size_t j) const noexcept { return elements_[i + j * rows_]; }
    matrix_view<T> view() noexcept { return *this; }
    matrix_view<const T> view() const noexcept { return *this; }

private:
    std::size_t rows_ = 0, columns_ = 0;
    std::vector<T> elements_;
};

// ---- what the overloads share -----------------------------------------------------------------------------

namespace detail {

template <class T>
struct real_part {
    using type = T;
};
template <class T>
struct real_part<std::complex<T>> {
    using type = T;
};
template <class T>
using real_of = typename real_part<T>::type;

// Whole numbers and mixtures of precisions are taken as double.
template <class T>
using if_float = std::enable_if_t<std::is_same_v<T, float>, int>;

inline bool is(char given, char letter) noexcept { return given == letter || given == letter + ('a' - 'A'); }

// Printing and stopping are off, on this thread, as long as the object lives.
class quiet {
public:
    quiet() noexcept { orvel_begin_quiet(&outcome_); }
    ~quiet()
    {
        if (!ended_) orvel_end_quiet(&outcome_);
    }
    quiet(const quiet&) = delete;
    quiet& operator=(const quiet&) = delete;

    // Of the stack of routines.
    std::int32_t level() const noexcept { return outcome_.level; }

    template <class T>
    result<T> keep(T value)
    {
        return with_error(result<T>(std::move(value)));
    }
    result<void> keep() { return with_error(result<void>()); }

private:
    template <class R>
    R with_error(R r)
    {
        ended_ = true;
        orvel_end_quiet(&outcome_);
        if (outcome_.severity != 0)
            r.post(static_cast<severity>(outcome_.severity), outcome_.code, outcome_.routine, outcome_.text);
        return r;
    }

    bool ended_ = false;
    orvel_outcome outcome_;
};

// Lengths that the arrays tell, and whether they agree; keeps the first complaint.
class lengths {
public:
    bool disagree() const noexcept { return !complaint_.empty(); }

    template <class T>
    result<T> refused(const char* routine, T value) const
    {
        result<T> r(std::move(value));
        r.post(severity::terminal, 0, routine, complaint_);
        return r;
    }
    result<void> refused(const char* routine) const
    {
        result<void> r;
        r.post(severity::terminal, 0, routine, complaint_);
        return r;
    }

    std::int32_t count(const char* name, std::size_t n)
    {
        if (n <= static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
            return static_cast<std::int32_t>(n);
        complain(name, "has more elements in a row than an integer counts");
        return 0;
    }

    // An array of this length, or of at least this length.
    template <class T>
    void equal(const char* name, const vector_view<T>& x, std::int64_t n)
    {
        if (static_cast<std::int64_t>(x.size()) != std::max<std::int64_t>(n, 0))
            elements(name, x.size(), n, "");
    }
    template <class T>
    void at_least(const char* name, const vector_view<T>& x, std::int64_t n)
    {
        if (static_cast<std::int64_t>(x.size()) < n) elements(name, x.size(), n, "at least ");
    }
    template <class T>
    void side_by_side(const char* name, const vector_view<T>& x)
    {
        if (x.step() != 1 && x.size() > 1) complain(name, "has elements that do not lie side by side");
    }
    template <class T>
    std::int32_t step(const char* name, const vector_view<T>& x)
    {
        if (x.step() >= std::numeric_limits<std::int32_t>::min() &&
            x.step() <= std::numeric_limits<std::int32_t>::max())
            return static_cast<std::int32_t>(x.step());
        complain(name, "has a step that is no integer of 32 bits");
        return 1;
    }

    template <class T>
    void shape(const char* name, const matrix_view<T>& a, std::int64_t rows, std::int64_t columns)
    {
        if (!a.fits()) complain(name, "has fewer elements than its rows, columns and leading dimension need");
        if (static_cast<std::int64_t>(a.rows()) != std::max<std::int64_t>(rows, 0) ||
            static_cast<std::int64_t>(a.columns()) != std::max<std::int64_t>(columns, 0))
            complain(name, "is " + std::to_string(a.rows()) + " by " + std::to_string(a.columns()) +
                               ", needed is " + std::to_string(rows) + " by " + std::to_string(columns));
    }
    // A leading dimension, which is never below 1.
    template <class T>
    std::int32_t leading(const char* name, const matrix_view<T>& a)
    {
        return count(name, std::max<std::size_t>(a.leading(), 1));
    }

    template <class T>
    std::vector<T> vector(const char* name, std::int64_t n)
    {
        return storage<std::vector<T>>(name, n, 1, [](auto rows, auto) { return std::vector<T>(rows); });
    }
    template <class T>
    orvel::matrix<T> matrix(const char* name, std::int64_t rows, std::int64_t columns)
    {
        return storage<orvel::matrix<T>>(name, rows, columns,
                                         [](auto m, auto n) { return orvel::matrix<T>(m, n); });
    }

private:
    void complain(const char* name, const std::string& what)
    {
        if (complaint_.empty()) complaint_ = std::string(name) + " " + what;
    }
    void elements(const char* name, std::size_t has, std::int64_t needs, const char* how)
    {
        complain(name, "has " + std::to_string(has) + " elements, needed are " + how + std::to_string(needs));
    }
    template <class A, class Make>
    A storage(const char* name, std::int64_t rows, std::int64_t columns, Make make)
    {
        try {
            return make(static_cast<std::size_t>(std::max<std::int64_t>(rows, 0)),
                        static_cast<std::size_t>(std::max<std::int64_t>(columns, 0)));
        } catch (const std::bad_alloc&) {
        } catch (const std::length_error&) {
        }
        complain(name, "needs more storage than there is");
        return A();
    }

    std::string complaint_;
};

// The address from which the elements of a vector go up, as the kernels want it.
template <class T>
T* lowest(const vector_view<T>& x) noexcept
{
    return x.step() >= 0 || x.size() == 0 ? x.data()
                                          : x.data() + static_cast<std::ptrdiff_t>(x.size() - 1) * x.step();
}

// The function that the routine in hand calls, and the one that the routine outside of it does. A program
// reaches its own thread-local data faster than the library does.
template <class Real, class F>
class bound {
public:
    explicit bound(F& f) noexcept : outer_(current_) { current_ = std::addressof(f); }
    ~bound() { current_ = outer_; }
    bound(const bound&) = delete;
    bound& operator=(const bound&) = delete;

    static Real evaluate(const Real* x) { return static_cast<Real>((*current_)(*x)); }

private:
    static inline ORVEL_PER_THREAD F* current_ = nullptr;
    F* const outer_;
};

// Calls CALL with a function of the library's kind behind which F stands. Where functions have nested so
// deeply that the stack of routines may become full, the library watches over the call, and ends it then.
template <class Real, class F, class Call>
void with_function(const quiet& calls, F& f, Call call)
{
    static_assert(std::is_invocable_v<F&, Real>, "the function takes one number");
    static_assert(std::is_convertible_v<std::invoke_result_t<F&, Real>, Real>,
                  "the function returns a number");
    constexpr std::int32_t deep = 25;
    const bound<Real, F> here(f);
    if (calls.level() < deep) {
        call(&bound<Real, F>::evaluate);
        return;
    }
    const orvel_context_function unused = [](void*, double, double*) { return std::int32_t{0}; };
    const orvel_context_call run = [](void* to, orvel_function, orvel_dfunction) {
        (*static_cast<Call*>(to))(&bound<Real, F>::evaluate);
    };
    orvel_with_context(unused, nullptr, run, &call);
}

}  // namespace detail

// ---- version and level -----------------------------------------------------------------------------

inline std::string_view version() noexcept { return orvel_version(); }
inline std::string_view level() noexcept { return orvel_level(); }
// False for a level that is unknown or that the machine does not have.
inline bool use_level(const std::string& name) { return orvel_use_level(name.c_str()) == 1; }
inline bool use_best_level() noexcept { return orvel_use_level(nullptr) == 1; }

}  // namespace orvel

#include "orvel/overloads.hpp"

#endif
