#pragma once

#include "resourceinfo/Export.h"
#include "resourceinfo/model/FieldIds.h"
#include "resourceinfo/model/Records.h"
#include "resourceinfo/parser/BfResourceParser.h"
#include "zel/Ptr.h"
#include "zel/SourceLocation.h"

namespace BfResourceInfo {

/// The index that a look-up by name answers when nothing has the name: 28 one bits.
inline constexpr U32 BfResourceInfoIndexInvalid = 0x0FFFFFFF;

/// The entry to the library: made from the path of a switch configuration, answers every query about what the
/// configuration's context files say. When it exists, everything has been read.
///
/// Names are compared exactly, as NUL-terminated bytes: an argument counts up to its first NUL, except where
/// said. Where several records share a name or a handle, the lowest index wins. What a query returns is the
/// caller's own copy. Queries take constant time on average, copies aside, unless they say otherwise.
///
/// Failures: a broken requirement is a fatal assertion of source "BfResourceInfoIntf" with the quoted text;
/// it ends the process unless the handler of Zel::assertionHandlerIs throws. Bad context data fails likewise
/// during construction, see BfResourceParser; with a handler that throws, nothing is left behind. A query
/// without a parser (after parserDel) fails with "parser".
///
/// Thread-safety: queries from any number of threads, without a lock, when Zel::pointerMode() is atomic, as
/// each counts a reference to the parser; creation, parserIs and parserDel need exclusion.
class BFRESOURCEINFO_EXPORT BfResourceInfoIntf : public Zel::PtrInterface,
                                                 public Mirrow::Allocated<BfResourceInfoIntf> {
  public:
    /// Makes an interface for a switch configuration's path and returns it complete, notifications on. Same
    /// as bfResourceInfoIntfFactory. A configuration that cannot be read gives an empty model, and says why
    /// in Ostler::sdkContext()->status.
    static Zel::Ptr<BfResourceInfoIntf> BfResourceInfoIntfIs( String const& switchConf );

    /// For the creators; an entity lives on the heap.
    explicit BfResourceInfoIntf( String const& switchConf );

    /// The interface's module, index 6.
    Zel::TypeId fwkType() const override;
    ~BfResourceInfoIntf() override;

    /// Path of the switch configuration that the interface was made with; never changes.
    String const& switchConf() const { return switchConf_; }
    /// False: this entity has no later initialisation for the framework to complete.
    bool initialized() const { return initialized_; }

    /// The parser that holds the model; empty after parserDel. Holding it keeps that model alive, also when
    /// the interface moves on to another one. The reference is to the interface's own slot: copy it to hold
    /// it.
    Zel::Ptr<BfResourceParser> const& parser() const { return parser_; }
    /// The parser for a switch configuration's path: the present one when it has that path (nothing is read
    /// again), else a new one that has read everything, which takes the place of the present one once it is
    /// complete.
    Zel::Ptr<BfResourceParser> parserIs( String const& name );
    /// Takes the parser out of the interface and hands it over; empty when there is none.
    Zel::Ptr<BfResourceParser> parserDel();

    /// Hardware resources: placed tables of any kind.
    /// @{

    /// Number of resources; their indexes run from 0 in parse order.
    U32 bfResourcesNum() const;
    /// Index of the first resource of that name, else BfResourceInfoIndexInvalid.
    U32 bfResourceIndex( String const& res ) const;
    /// The resource at an index. Fatal: "index != BfResourceInfoIndexInvalid" for that very index, then
    /// "index < bfResourcesNum()".
    BfResource bfResource( U32 index ) const;
    /// One field of the first resource of that name; flags as 0 or 1. Fatal: "index !=
    /// BfResourceInfoIndexInvalid" for an unknown name, "0 && \"Unsupported field\"" for resourceStageStart
    /// and any value that is no field.
    U32 bfResourceField( String const& res, BfResourceFieldId f ) const;
    /// First stage of the first resource of that name ("stage_number"). Fatal: "index !=
    /// BfResourceInfoIndexInvalid" for an unknown name.
    int bfResourceStageStart( String const& res ) const;
    /// The first resource with that handle. Fatal: "0" for an unknown handle.
    BfResource bfResourceByHandle( U32 handle ) const;

    /// @}
    /// Match tables, in the same way.
    /// @{

    /// Number of match tables; their indexes run from 0 in parse order.
    U32 bfTablesNum() const;
    /// Number of slots of the hit-bit space that all tables with idle time share.
    U32 bfTablesHitBitSmashSize() const;
    /// Index of the first table of that name, else BfResourceInfoIndexInvalid.
    U32 bfTableIndex( String const& tbl ) const;
    /// The table at an index; throws Vessa::VectorOutOfRange from bfTablesNum() on.
    BfTableInfo bfTable( U32 index ) const;
    /// One numeric field of the first table of that name; flags as 0 or 1. Fatal: "index !=
    /// BfResourceInfoIndexInvalid" for an unknown name, "0" for a value that is no field.
    U32 bfTableField( String const& tbl, BfTableFieldId f ) const;
    /// One text field of the first table of that name; empty where the table has none. Fatal: as
    /// bfTableField.
    String bfTableString( String const& tbl, BfTableStringId f ) const;
    /// The first table with that handle. Fatal: "0" for an unknown handle.
    BfTableInfo bfTableByHandle( U32 handle ) const;
    /// The name of the table at an index; throws Vessa::VectorOutOfRange from bfTablesNum() on.
    String bfTableName( U32 index ) const;

    /// @}
    /// Counters: statistics tables.
    /// @{

    /// Number of counters; their indexes run from 0 in parse order.
    U32 bfTableCountersNum() const;
    /// Index of the first counter of that name, else BfResourceInfoIndexInvalid.
    U32 bfTableCounterIndex( String const& counter ) const;
    /// The counter at an index. Fatal: "index != BfResourceInfoIndexInvalid" for that very index, then
    /// "index < bfTableCountersNum()".
    BfTableCounterInfo bfTableCounter( U32 index ) const;
    /// One field of the first counter of that name; flags as 0 or 1. Fatal: "index !=
    /// BfResourceInfoIndexInvalid" for an unknown name, "0" for a value that is no field.
    U32 bfTableCounterField( String const& counter, BfCounterFieldId f ) const;

    /// @}
    /// Meters: meter tables that are no WRED tables.
    /// @{

    /// Number of meters; their indexes run from 0 in parse order.
    U32 bfTableMetersNum() const;
    /// Index of the first meter of that name, else BfResourceInfoIndexInvalid.
    U32 bfTableMeterIndex( String const& meter ) const;
    /// The meter at an index. Fatal: "index != BfResourceInfoIndexInvalid" for that very index, then
    /// "index < bfTableMetersNum()".
    BfTableMeterInfo bfTableMeter( U32 index ) const;
    /// One field of the first meter of that name; flags as 0 or 1. Fatal: as bfTableCounterField.
    U32 bfTableMeterField( String const& meter, BfMeterFieldId f ) const;
    /// Name of the table of the first meter of that name, or without such a meter of the first
    /// counter of that name: of a direct one the placed table that lists it (of several the one with the
    /// lowest handle), of any other the one placed table whose actions name it in "indirect_resources", empty
    /// when none or several do. The table need not be one of the match tables here. WRED tables are not
    /// looked at. Changes nothing, though it is no constant operation. Fatal: "false && \"check table name\""
    /// for a name of neither.
    String bfAssociatedTable( String const& table );

    /// @}
    /// WRED tables.
    /// @{

    /// Number of WRED tables; their indexes run from 0 in parse order.
    U32 bfTableWredNum() const;
    /// Index of the first WRED table of that name, else BfResourceInfoIndexInvalid.
    U32 bfTableWredIndex( String const& wred ) const;
    /// The WRED table at an index. Fatal: "index != BfResourceInfoIndexInvalid" for that very index, then
    /// "index < bfTableWredNum()".
    BfTableWredInfo bfTableWred( U32 index ) const;
    /// One field of the first WRED table of that name; flags as 0 or 1. Fatal: as bfTableCounterField.
    U32 bfTableWredField( String const& wred, BfWredFieldId f ) const;

    /// @}
    /// Registers, learn quantas, and the actions of match tables.
    /// @{

    /// Number of registers; their indexes run from 0 in parse order.
    U32 bfRegistersNum() const;
    /// Index of the first register of that name, else BfResourceInfoIndexInvalid.
    U32 bfRegisterIndex( String const& reg ) const;
    /// The register at an index. Fatal: "index != BfResourceInfoIndexInvalid" for that very index, then
    /// "index < bfRegistersNum()".
    BfRegisterInfo bfRegister( U32 index ) const;

    /// Number of learn quantas; their indexes run from 0 in parse order.
    U32 bfLearnQuantasNum() const;
    /// Index of the first learn quanta of that name, else BfResourceInfoIndexInvalid.
    U32 bfLearnQuantaIndex( String const& lq ) const;
    /// The learn quanta at an index. Fatal: "index != BfResourceInfoIndexInvalid" for that very index, then
    /// "index < bfLearnQuantasNum()".
    BfLearnQuantaInfo bfLearnQuanta( U32 index ) const;

    /// Number of actions; their indexes run from 0 in the order of the tables, then of each table's actions.
    U32 bfActionsNum() const;
    /// Index of the first action of that name, of whatever table, else BfResourceInfoIndexInvalid.
    U32 bfActionIndex( String const& action ) const;
    /// The action at an index. Fatal: "index != BfResourceInfoIndexInvalid" for that very index, then
    /// "index < bfActionsNum()".
    BfActionInfo bfAction( U32 index ) const;

    /// @}
    /// Flexible headers and dynamic hash calculations, by name: every byte of it counts. They let no
    /// exception out: one inside, such as that of an assertion handler, ends the process.
    /// @{

    /// Size of a header in bytes, 0 to 8191; 0 for an unknown one. Changes nothing, though it is no constant
    /// operation.
    U32 bfHeaderSize( String const& hdrName ) noexcept;
    /// Handle of a calculation ("handle"); BfResourceInfoIndexInvalid for an unknown one.
    U32 bfDynHashTableHdl( String const& hashName ) const noexcept;
    /// Handle of a calculation's field list; BfResourceInfoIndexInvalid for an unknown calculation.
    U32 bfDynHashFieldListHdl( String const& hashName ) const noexcept;
    /// Number of a calculation's fields; BfResourceInfoIndexInvalid for an unknown one.
    U32 bfDynHashFieldCount( String const& hashName ) const noexcept;
    /// Position of the first field of that name, as the context file writes it, in a calculation's field
    /// list, from 0; BfResourceInfoIndexInvalid for an unknown calculation or field. Linear in the fields.
    U32 bfDynHashFieldId( String const& hashName, String const& fieldName ) const noexcept;

    /// @}

  private:
    void handleInitialized();
    BFRESOURCEINFO_LOCAL Zel::Ptr<BfResourceParser>
    queried( Zel::SourceLocation query = Zel::SourceLocation::current() ) const;

    String const switchConf_;
    Zel::Ptr<BfResourceParser> parser_;
    bool initialized_ = false;
};

/// Makes an interface for a switch configuration's path and returns it complete, notifications on: the
/// library's entry point.
BFRESOURCEINFO_EXPORT Zel::Ptr<BfResourceInfoIntf> bfResourceInfoIntfFactory( String const& switchConf );

} // namespace BfResourceInfo
