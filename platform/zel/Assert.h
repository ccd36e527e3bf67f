#pragma once

#include "vessa/Export.h"
#include "vessa/Types.h"

#include <exception>
#include <locale>
#include <optional>
#include <sstream>

namespace Zel {

using Vessa::String;
using Vessa::U32;
using Vessa::U64;

/// Where in the input a thread is, in parts. What does not apply, or is not known, is empty.
struct InputPlace {
    /// What keeps the file from being used.
    enum class Problem { none, open, read, syntax };
    /// One of a list that the thread goes through: table 3 "acl".
    struct Element {
        String kind = {};
        U32 index = 0;
        std::optional<String> name = {};
    };

    String kind = {};                    ///< of the file: "context file"
    String file = {};                    ///< its path
    Problem problem = Problem::none;     ///< with the file
    String reason = {};                  ///< of the problem
    std::optional<U64> line = {};        ///< of the problem, from 1
    std::optional<U64> column = {};      ///< of the problem, in bytes, from 1
    std::optional<String> pointer = {};  ///< JSON pointer to the value that was read last
    String member = {};                  ///< of that value, asked for
    std::optional<Element> element = {}; ///< that the thread is at
    std::optional<U32> handle = {};      ///< that was looked up and leads to nothing
};

/// The place in words: `context file c.json at /tables/3, member "size", table 3 "acl"`, or `context file
/// c.json: line 2, column 14: Invalid value.`; control characters as "\x0a". Without the handle. Empty for an
/// empty place.
VESSA_EXPORT String toText( InputPlace const& place );

/// A broken condition: where in the code, what was said about it, and where in the input the thread was.
struct AssertionFailure {
    String source;    ///< source name, "BfResourceParser"
    U32 line = 0;     ///< line in it
    String function;  ///< signature of the operation, see Operation; else of the function
    String condition; ///< the condition as written in the code
    String message;   ///< the streamed message; empty when there is none
    String position;  ///< where in the input, the place as a text; empty outside of a read

    InputPlace place = {}; ///< the same in parts
    String expected = {};  ///< what should be at the place: "an array"; empty where the condition says it
};

/// The failure in lines, each with its line end: "SOURCE:LINE: SIGNATURE: assertion failed: CONDITION", then
/// the message if any, then "in " and the position if any.
VESSA_EXPORT String toText( AssertionFailure const& failure );

/// What a throwing handler throws. what() is one line: the failure's first, then ", in " and the position if
/// any.
class VESSA_EXPORT AssertionError : public std::exception {
  public:
    explicit AssertionError( AssertionFailure failure );
    ~AssertionError() override;
    AssertionError( AssertionError const& ) = default;
    AssertionError& operator=( AssertionError const& ) = default;

    AssertionFailure const& failure() const noexcept { return failure_; }
    /// Lives as long as the exception.
    char const* what() const noexcept override { return what_.c_str(); }

  private:
    AssertionFailure failure_;
    String what_;
};

/// Called for every broken condition, on the thread that met it. It may throw; when it returns, the failure
/// goes to standard error and the process ends by abort().
using AssertionHandler = void ( * )( AssertionFailure const& failure );

/// Installs a handler (null: none) for the whole process and returns the former. Thread-safe.
VESSA_EXPORT AssertionHandler assertionHandlerIs( AssertionHandler handler );

/// A ready-made handler that throws AssertionError.
[[noreturn]] VESSA_EXPORT void throwAssertionError( AssertionFailure const& failure );

/// Says where in the input this thread is, as long as the object lives: the failures of the thread carry the
/// place that all its scopes make, outermost first. Scopes nest strictly.
class VESSA_EXPORT InputScope {
  public:
    InputScope();
    InputScope( InputScope const& ) = delete;
    InputScope& operator=( InputScope const& ) = delete;

    /// Adds what it knows to the place that the scopes around it have made; called only when an assertion
    /// fails.
    virtual void locate( InputPlace& place ) const = 0;

    /// The innermost scope of this thread, null when there is none, and the one around a scope.
    static InputScope const* current();
    InputScope const* outer() const { return outer_; }

  protected:
    virtual ~InputScope();

  private:
    InputScope const* outer_;
};

/// Says which operation this thread is in, as long as the object lives: the failures of the thread carry this
/// signature, whatever function the broken condition is in. The innermost counts. They nest strictly; the
/// text must outlive the object.
class VESSA_EXPORT Operation {
  public:
    explicit Operation( char const* signature );
    Operation( Operation const& ) = delete;
    Operation& operator=( Operation const& ) = delete;
    ~Operation();

  private:
    char const* outer_;
};

/// What is streamed after a condition.
class AssertionMessage {
  public:
    AssertionMessage() { text_.imbue( std::locale::classic() ); } // numbers as they are, without grouping
    template<class T>
    AssertionMessage& operator<<( T const& value ) {
        text_ << value;
        return *this;
    }
    String text() const { return text_.str(); }

  private:
    std::ostringstream text_;
};

/// The place of a condition in the code. Made by the macro below, or by hand where the texts are given.
struct VESSA_EXPORT AssertionSite {
    char const* source;
    U32 line;
    char const* function;
    char const* condition;
    char const* expected = ""; ///< what should be at the place in the input

    /// Reports the failure: the handler, or standard error and abort().
    [[noreturn]] void fail( String const& message = {} ) const;
    /// An operator, so that a message can be streamed after the macro: `&` binds weaker than `<<`.
    [[noreturn]] void operator&( AssertionMessage const& message ) const { fail( message.text() ); }
};

} // namespace Zel

/// Requires a condition: `ZEL_ASSERT( size > 0 ) << "size of " << name;`. The failure's text is the condition
/// as written. The file defines ZEL_SOURCE, its source name, before the first use.
#define ZEL_ASSERT( ... )                                                                                    \
    ( __VA_ARGS__ ) ? static_cast<void>( 0 )                                                                 \
                    : ::Zel::AssertionSite{ ZEL_SOURCE, __LINE__, __PRETTY_FUNCTION__, #__VA_ARGS__ } &      \
                          ::Zel::AssertionMessage()
