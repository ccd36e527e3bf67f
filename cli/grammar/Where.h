#pragma once

#include "cli/grammar/Pattern.h"
#include "inspect/rows/Row.h"

#include <memory>

namespace Bfri {

/// A condition on the fields of rows: "size<4096 and not (name~=^l3 or direct=true)". Values are quoted, or
/// one word. `and` binds more than `or`, and `not` most.
class Where {
  public:
    /// Throws Failure with status usage for a text that is not a condition, an unknown field, or a value that
    /// a field can't have, and says why. Only names and types of the blank row count.
    Where( String const& text, Row const& blank );

    /// For a list, one element must fulfil it. An absent value equals nothing.
    bool holds( Row const& row ) const { return condition_->holds( row ); }

    /// A condition, or a part of one.
    struct Condition {
        virtual ~Condition() = default;
        virtual bool holds( Row const& row ) const = 0;
    };

  private:
    std::shared_ptr<Condition const> condition_;
};

} // namespace Bfri
