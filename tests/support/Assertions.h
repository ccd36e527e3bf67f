#pragma once

#include "zel/Assert.h"

#include <functional>

namespace Support {

/// While it lives, broken conditions throw Zel::AssertionError; then the former handler is back.
class ThrowingAssertions {
  public:
    ThrowingAssertions() : former_( Zel::assertionHandlerIs( Zel::throwAssertionError ) ) {}
    ThrowingAssertions( ThrowingAssertions const& ) = delete;
    ThrowingAssertions& operator=( ThrowingAssertions const& ) = delete;
    ~ThrowingAssertions() { Zel::assertionHandlerIs( former_ ); }

  private:
    Zel::AssertionHandler former_;
};

/// The failure that the action ends with. An action that ends otherwise fails the test, and answers a failure
/// without texts.
Zel::AssertionFailure failureOf( std::function<void()> const& action );

/// The failure's condition alone.
std::string conditionOf( std::function<void()> const& action );

} // namespace Support
