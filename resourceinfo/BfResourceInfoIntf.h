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
/// Names are compared exactly, as NUL-terminated bytes: an argument counts up to its first NUL. Where several
/// records share a name or a handle, the lowest index wins. What a query returns is the caller's own copy.
///
/// Failures: a broken requirement is a fatal assertion of source "BfResourceInfoIntf" with the quoted text;
/// it ends the process unless the handler of Zel::assertionHandlerIs throws. Bad context data fails likewise
/// during construction, see BfResourceParser; with a handler that throws, nothing is left behind. A query
/// without a parser (after parserDel) fails with "parser".
///
/// Thread-safety: queries from any number of threads, without a lock, when Zel::pointerMode() is atomic;
/// creation, parserIs and parserDel need exclusion.
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

    /// Hardware resources, as recorded from the context files. All take constant time on average, copies
    /// aside.
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
