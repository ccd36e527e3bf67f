#pragma once

#include "inspect/check/Findings.h"

#include <unordered_map>

namespace Bfri {

/// Where the records of a configuration start in their context files, as its survey knows; it outlives them.
class RecordPlaces {
  public:
    explicit RecordPlaces( Configuration const& configuration );

    /// Of the finding's record: the element with its name, its handle and in its context file, as far as
    /// there is one; of an action its table. Nothing of fields, and of what is no record.
    std::optional<FindingPlace> of( Finding const& finding ) const;

  private:
    struct Candidate {
        Context::FileSurvey const* file;
        Context::SurveyedElement const* element;
        std::optional<U32> handle; ///< of the record, which may be an action
    };
    void add( Context::FileSurvey const& file, Context::SurveyedElement const& element, std::string_view name,
              std::optional<U32> handle );

    std::unordered_map<std::string_view, std::vector<Candidate>> byName_;
};

} // namespace Bfri
