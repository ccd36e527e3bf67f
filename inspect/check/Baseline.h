#pragma once

// The findings of an earlier check, so that only new ones count.

#include "inspect/check/Findings.h"

#include <map>
#include <variant>

namespace Bfri {

/// A finding of an earlier answer.
struct KnownFinding {
    String code;
    String kind;
    String name;
    String message;
    String contextFile; ///< empty if none is known
    String switchConf;  ///< whose finding it is
};

/// The findings of an earlier check. Each of them makes one finding known: if there are two alike now, the
/// second is new.
class Baseline {
  public:
    explicit Baseline( std::vector<KnownFinding> findings );

    /// Marks known findings: first those with the same message, since several may be about one record; then
    /// those with the same code, kind of record and name, since handles change with every compilation. Only
    /// the last part of a file's path counts.
    void mark( std::vector<Finding>& findings, String const& switchConf );

    /// The known findings that mark() has not met so far, in their order, without ignored codes.
    std::vector<KnownFinding> gone( std::vector<FindingKind const*> const& ignored ) const;

  private:
    using Key = std::tuple<String, String, String>;
    template<class Matches>
    bool take( Key const& key, Matches matches );

    std::vector<KnownFinding> findings_;
    std::vector<bool> taken_;
    std::map<Key, std::vector<std::size_t>> byKey_;
};

/// The findings in a JSON answer of `check`; for any other file, what is wrong with it.
std::variant<Baseline, String> readBaseline( String const& path );

} // namespace Bfri
