#pragma once

#include "cli/grammar/Pattern.h"
#include "inspect/rows/Row.h"

#include <memory>

namespace Bfri {

/// A condition on the fields of rows: "size<4096 and not (name~=^l3 or direct=true)". Values are quoted, or
/// one word. `and` binds more than `or`, and `not` most.
class Where {
  public:
    /// A text that is no condition, an unknown field, or a value or an operator that a field can't have is a
    /// Failure of status usage that says why. Of the blank row only names and types count.
    Where( String const& text, Row const& blank );

    /// Of a list, one element must be so; for !=, none may be equal. A value that is absent equals nothing.
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
