#pragma once

// Rows of bad inputs for a step that reads one value of a context file.

#include "resourceinfo/parser/context/Json.h"
#include "tests/support/ContextBuilder.h"

#include <functional>
#include <optional>
#include <vector>

namespace BfResourceInfo {

using Context::Json;

/// A JSON text as the passes see it.
class ParsedJson {
  public:
    explicit ParsedJson( std::string const& text ) { document_.Parse( text.data(), text.size() ); }
    Json json() const { return Json( document_ ); }
    Context::JsonDocument const& document() const { return document_; }

  private:
    Context::JsonDocument document_;
};

/// A context file with something of everything that some pass reads. Its first tables are a direct counter
/// "c", the match table "acl", a meter "m" and a register "r".
Support::ContextBuilder contextOfEveryPass();

/// A member that is replaced, added or (without a value) removed, and the condition that breaks then.
struct Fault {
    char const* pointer;
    std::optional<char const*> json;
    char const* condition;
};

/// A fault that removes a member.
inline constexpr std::optional<char const*> removed = std::nullopt;

/// The texts of the JSON library's own conditions.
inline constexpr char const* noObject = "IsObject()";
inline constexpr char const* noMember = "false";
inline constexpr char const* noArray = "IsArray()";
inline constexpr char const* pastTheEnd = "index < data_.a.size";
inline constexpr char const* noString = "IsString()";
inline constexpr char const* noBool = "IsBool()";
inline constexpr char const* noUnsigned = "data_.f.flags & kUintFlag";
inline constexpr char const* noInteger = "data_.f.flags & kInt64Flag";

/// Expects the step to pass for the value as it is, to break each row's condition for that row's fault, and
/// for any two faults at once to break what the earlier row breaks alone, at the same place of the code: the
/// rows are in the order in which the step reads.
void expectFaults( Support::JsonTree const& good, std::vector<Fault> const& faults,
                   std::function<void( Json )> const& step );

} // namespace BfResourceInfo
