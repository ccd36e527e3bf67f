#pragma once

// The eight kinds of records, for tests that hold for several: of each its fields, the parser's operations on
// its sequence, and the interface's queries.

#include "resourceinfo/BfResourceInfoIntf.h"

#include <tuple>

namespace BfResourceInfo {

/// Every field of a record.
template<class Record>
constexpr auto fields = nullptr;
template<>
inline constexpr auto fields<BfResource> = std::tuple( &BfResource::name, &BfResource::handle,
                                                       &BfResource::type, &BfResource::size,
                                                       &BfResource::ingress, &BfResource::stages,
                                                       &BfResource::stageStart );
template<>
inline constexpr auto fields<BfTableInfo> = std::tuple(
    &BfTableInfo::name, &BfTableInfo::handle, &BfTableInfo::size, &BfTableInfo::totalEntries,
    &BfTableInfo::hitBitSupported, &BfTableInfo::idleTimePrecision, &BfTableInfo::hitBitSmashOffset,
    &BfTableInfo::hitBitSmashLast, &BfTableInfo::maxEntries, &BfTableInfo::maxPartitions,
    &BfTableInfo::maxPrios, &BfTableInfo::hasActionProfile, &BfTableInfo::maxAdtEntries,
    &BfTableInfo::maxSelGroups, &BfTableInfo::maxSelEntries, &BfTableInfo::adtHandle, &BfTableInfo::selHandle,
    &BfTableInfo::adtName, &BfTableInfo::selName, &BfTableInfo::logicalPipe );
template<>
inline constexpr auto fields<BfTableCounterInfo> = std::tuple(
    &BfTableCounterInfo::name, &BfTableCounterInfo::handle, &BfTableCounterInfo::ownHandle,
    &BfTableCounterInfo::size, &BfTableCounterInfo::direct, &BfTableCounterInfo::bytes,
    &BfTableCounterInfo::packets, &BfTableCounterInfo::associatedTable, &BfTableCounterInfo::logicalPipe );
template<>
inline constexpr auto fields<BfTableMeterInfo> = std::tuple(
    &BfTableMeterInfo::name, &BfTableMeterInfo::handle, &BfTableMeterInfo::direct, &BfTableMeterInfo::pps,
    &BfTableMeterInfo::hasPreColor, &BfTableMeterInfo::associatedTable, &BfTableMeterInfo::logicalPipe );
template<>
inline constexpr auto fields<BfTableWredInfo> = std::tuple( &BfTableWredInfo::name, &BfTableWredInfo::handle,
                                                            &BfTableWredInfo::direct,
                                                            &BfTableWredInfo::logicalPipe );
template<>
inline constexpr auto fields<BfRegisterInfo> = std::tuple( &BfRegisterInfo::name, &BfRegisterInfo::handle,
                                                           &BfRegisterInfo::indirect,
                                                           &BfRegisterInfo::dataType, &BfRegisterInfo::width,
                                                           &BfRegisterInfo::dualWidth );
template<>
inline constexpr auto fields<BfLearnQuantaInfo> = std::tuple( &BfLearnQuantaInfo::name,
                                                              &BfLearnQuantaInfo::handle );
template<>
inline constexpr auto fields<BfActionInfo> = std::tuple( &BfActionInfo::handle, &BfActionInfo::name,
                                                         &BfActionInfo::tableName );

/// True when the records are equal in every field.
template<class Record>
bool same( Record const& a, Record const& b ) {
    return std::apply( [ & ]( auto... field ) { return ( ( a.*field == b.*field ) && ... ); },
                       fields<Record> );
}

#define RECORD_KIND( Kind, RecordType, sequence, query, count )                                              \
    struct Kind {                                                                                            \
        using Record = RecordType;                                                                           \
        static constexpr char const* operation = #query;                                                     \
        static constexpr char const* bound = "index < " #count "()";                                         \
        static constexpr auto push = &BfResourceParser::sequence##Push;                                      \
        static constexpr auto is = &BfResourceParser::sequence##Is;                                          \
        static constexpr auto pop = &BfResourceParser::sequence##Pop;                                        \
        static constexpr auto popAll = &BfResourceParser::sequence##PopAll;                                  \
        static constexpr auto num = &BfResourceInfoIntf::count;                                              \
        static constexpr auto index = &BfResourceInfoIntf::query##Index;                                     \
        static constexpr auto record = &BfResourceInfoIntf::query;                                           \
    };

RECORD_KIND( Resources, BfResource, bfResources, bfResource, bfResourcesNum )
RECORD_KIND( Tables, BfTableInfo, bfTables, bfTable, bfTablesNum )
RECORD_KIND( Counters, BfTableCounterInfo, bfCounters, bfTableCounter, bfTableCountersNum )
RECORD_KIND( Meters, BfTableMeterInfo, bfMeters, bfTableMeter, bfTableMetersNum )
RECORD_KIND( Wreds, BfTableWredInfo, bfWreds, bfTableWred, bfTableWredNum )
RECORD_KIND( Registers, BfRegisterInfo, bfRegisterInfos, bfRegister, bfRegistersNum )
RECORD_KIND( LearnQuantas, BfLearnQuantaInfo, bfLearnQuantaInfos, bfLearnQuanta, bfLearnQuantasNum )
RECORD_KIND( Actions, BfActionInfo, bfActions, bfAction, bfActionsNum )

#undef RECORD_KIND

/// The kinds with a query by identifier: the query, and the record's fields in the order of the identifiers.
template<class Kind>
constexpr auto fieldQuery = nullptr;
template<class Kind>
constexpr auto identified = std::tuple();

#define FIELD_QUERY( Kind, query, ... )                                                                      \
    template<>                                                                                               \
    inline constexpr auto fieldQuery<Kind> = &BfResourceInfoIntf::query;                                     \
    template<>                                                                                               \
    inline constexpr auto identified<Kind> = std::tuple( __VA_ARGS__ );

FIELD_QUERY( Resources, bfResourceField, &BfResource::handle, &BfResource::type, &BfResource::size,
             &BfResource::ingress, &BfResource::stages )
FIELD_QUERY( Tables, bfTableField, &BfTableInfo::handle, &BfTableInfo::size, &BfTableInfo::hitBitSupported,
             &BfTableInfo::idleTimePrecision, &BfTableInfo::hitBitSmashOffset, &BfTableInfo::maxEntries,
             &BfTableInfo::maxPartitions, &BfTableInfo::maxPrios, &BfTableInfo::hasActionProfile,
             &BfTableInfo::maxAdtEntries, &BfTableInfo::maxSelGroups, &BfTableInfo::maxSelEntries,
             &BfTableInfo::adtHandle, &BfTableInfo::selHandle )
FIELD_QUERY( Counters, bfTableCounterField, &BfTableCounterInfo::handle, &BfTableCounterInfo::size,
             &BfTableCounterInfo::direct, &BfTableCounterInfo::bytes, &BfTableCounterInfo::packets )
FIELD_QUERY( Meters, bfTableMeterField, &BfTableMeterInfo::handle, &BfTableMeterInfo::direct,
             &BfTableMeterInfo::pps, &BfTableMeterInfo::hasPreColor )
FIELD_QUERY( Wreds, bfTableWredField, &BfTableWredInfo::handle, &BfTableWredInfo::direct )

#undef FIELD_QUERY

/// The type of the identifiers that a field query takes.
template<class Query>
struct IdentifierOf;
template<class Id>
struct IdentifierOf<U32 ( BfResourceInfoIntf::* )( String const&, Id ) const> {
    using Type = Id;
};
template<class Kind>
using Identifier = typename IdentifierOf<std::remove_const_t<decltype( fieldQuery<Kind> )>>::Type;

} // namespace BfResourceInfo
