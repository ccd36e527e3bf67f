#include "inspect/diff/Verdict.h"

namespace Bfri {

namespace {

template<std::size_t Size>
bool isOneOf( std::string_view const ( &words )[ Size ], std::string_view word ) {
    return std::find( std::begin( words ), std::end( words ), word ) != std::end( words );
}

/// By name; placed tables are records of other kinds, too.
bool isQueried( RecordKind const& kind ) { return kind.kind != Kind::handles; }

/// What only placement decides.
bool isPlacement( std::string_view field ) {
    static constexpr std::string_view fields[] = { "stages", "stageStart", "stageNumbers",
                                                   "hitBitSmashOffset", "hitBitSmashLast" };
    return isOneOf( fields, field );
}

/// What an agent needs so many of, or more.
bool isCapacity( RecordKind const& kind, std::string_view field ) {
    static constexpr std::string_view fields[] = {
        "size",          "totalEntries", "maxEntries",    "maxPartitions", "maxPrios",
        "maxAdtEntries", "maxSelGroups", "maxSelEntries", "ingressBytes",  "egressBytes" };
    return kind.kind != Kind::headers && isOneOf( fields, field );
}

Effect effectOf( RecordKind const& kind, Change const& change ) {
    if( isPlacement( change.field ) )
        return Effect::none;
    if( isCapacity( kind, change.field ) ) {
        if( change.to.is.index() == 0 ) // of a PHV field on one side of the switch
            return Effect::removed;
        return change.to < change.from ? Effect::shrunk : Effect::none;
    }
    return Effect::changed;
}

} // namespace

char const* textOf( Effect effect ) {
    switch( effect ) {
    case Effect::removed:
        return "removed";
    case Effect::shrunk:
        return "shrunk";
    case Effect::changed:
        return "changed";
    case Effect::none:
        break;
    }
    return "";
}

Effect effectOfRemoval( RecordKind const& kind ) {
    return isQueried( kind ) ? Effect::removed : Effect::none;
}

Effect effectOf( RecordKind const& kind, ChangedRecord const& record ) {
    if( !isQueried( kind ) )
        return Effect::none;
    Effect worst = record.displaced ? Effect::changed : Effect::none;
    for( Change const& change : record.fields )
        worst = std::max( worst, effectOf( kind, change ) );
    return worst;
}

std::vector<Notice> noticesOf( Comparison const& comparison ) {
    std::vector<Notice> notices;
    auto const add = [ & ]( RecordKind const* kind, Row const& row, ChangedRecord const* change,
                            Effect effect ) {
        if( effect != Effect::none )
            notices.push_back( { kind, &row, change, effect } );
    };
    for( KindComparison const& kind : comparison.kinds ) {
        for( Row const& row : kind.removed )
            add( kind.kind, row, nullptr, effectOfRemoval( *kind.kind ) );
        for( ChangedRecord const& record : kind.changed )
            add( kind.kind, record.row, &record, effectOf( *kind.kind, record ) );
    }
    return notices;
}

bool isCompatible( Comparison const& comparison ) {
    return comparison.handles.shared.empty() && noticesOf( comparison ).empty();
}

} // namespace Bfri
