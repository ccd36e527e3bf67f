#pragma once

/// The signatures of the operations on context data, as failures and trace lines carry them: the same
/// whatever compiler builds the library, and however an operation is divided into functions.
namespace Context::Signatures {

inline constexpr char parseContextJson[] =
    "void parseContextJson(BfResourceInfo::BfResourceParser*, const String&, const BfResourceParserContext&)";
inline constexpr char preprocessContext[] =
    "void preprocessContext(BfResourceInfo::BfResourceParser*, rapidjson::Document&, "
    "const BfResourceParserContext&)";
inline constexpr char getTableThatReferences[] =
    "U32 getTableThatReferences(BfResourceInfo::BfResourceParser*, std::string_view, U32)";
inline constexpr char stringToResourceType[] = "BfResourceType stringToResourceType(std::string_view)";
inline constexpr char parseBfTable[] =
    "int parseBfTable(BfResourceInfo::BfResourceParser*, const rapidjson::Value&, String, "
    "const BfResourceParserContext&)";
inline constexpr char parsePhvStage[] =
    "int parsePhvStage(BfResourceInfo::BfResourceParser*, const rapidjson::Value&, const String&)";

/// The other steps take parser, JSON value and context.
#define BF_STEP( name )                                                                                      \
    inline constexpr char name[] =                                                                           \
        "int " #name "(BfResourceInfo::BfResourceParser*, const rapidjson::Value&, "                         \
        "const BfResourceParserContext&)"
BF_STEP( parseBfResource );
BF_STEP( parseBfAction );
BF_STEP( parseBfTableCounterInfo );
BF_STEP( parseBfTableMeterInfo );
BF_STEP( parseBfRegisterInfo );
BF_STEP( parseBfLearnQuantaInfo );
BF_STEP( parseBfHeaderInfo );
BF_STEP( parseBfDynamicHashInfo );
#undef BF_STEP

} // namespace Context::Signatures
