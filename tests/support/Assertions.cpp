#include "tests/support/Assertions.h"

#include <gtest/gtest.h>

namespace Support {

Zel::AssertionFailure failureOf( std::function<void()> const& action ) {
    ThrowingAssertions const scope;
    try {
        action();
        ADD_FAILURE() << "expected a broken condition";
    } catch( Zel::AssertionError const& error ) {
        return error.failure();
    } catch( std::exception const& error ) {
        ADD_FAILURE() << "expected a broken condition, got the exception " << error.what();
    }
    return {};
}

std::string conditionOf( std::function<void()> const& action ) { return failureOf( action ).condition; }

} // namespace Support
