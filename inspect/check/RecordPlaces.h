#pragma once

#include "inspect/check/Findings.h"

#include <unordered_map>

namespace Bfri {

/// Where the records of a configuration start in their context files, by its survey. The configuration must
/// outlive this object.
class RecordPlaces {
  public:
    explicit RecordPlaces( Configuration const& configuration );

    /// The place of the finding's record: the element with its name and, if known, its handle and context
    /// file; for an action, its table. Nothing for fields, and for what is not a record.
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
