#pragma once

#include "resourceinfo/Export.h"
#include "resourceinfo/model/BfHeaderInfo.h"
#include "resourceinfo/model/BfPipeMask.h"
#include "resourceinfo/model/Records.h"
#include "resourceinfo/parser/ResourceHandles.h"
#include "zel/Collections.h"
#include "zel/Ptr.h"

namespace BfResourceInfo {

/// Entries of the parser's ordered maps.
struct ZelContextFile : Zel::OrderedMapEntry<ZelContextFile, BfPipeMask, String> {
    using OrderedMapEntry::OrderedMapEntry;
};
struct ZelIngressPhvContainers : Zel::OrderedMapEntry<ZelIngressPhvContainers, String, U8> {
    using OrderedMapEntry::OrderedMapEntry;
};
struct ZelEgressPhvContainers : Zel::OrderedMapEntry<ZelEgressPhvContainers, String, U8> {
    using OrderedMapEntry::OrderedMapEntry;
};

/// A sequence of records of the model, found by name and by handle at once.
template<class Record>
using RecordSequence = Zel::Sequence<Record, BfByName<Record>, BfByHandle<Record>>;

/// The whole model of one switch configuration. A parser that exists has read everything: construction reads
/// the configuration and every context file that it names, and nothing is read again.
///
/// Failures: bad context data is a fatal assertion of source "BfResourceParser", see Zel::AssertionHandler.
/// With a handler that throws, construction leaves nothing behind. A configuration that cannot be read gives
/// an empty model; how its reading ended stands in Ostler::sdkContext()->status.
///
/// Thread-safety: any number of threads may read, when Zel::pointerMode() is atomic; a change needs
/// exclusion. Construction uses the process-wide Ostler::sdkContext(), so two parsers are constructed one
/// after the other.
class BFRESOURCEINFO_EXPORT BfResourceParser : public Zel::PtrInterface,
                                               public Mirrow::Allocated<BfResourceParser> {
  public:
    /// Makes a parser for a switch configuration's path; returns it complete, notifications on. Same as
    /// bfResourceParserFactory.
    static Zel::Ptr<BfResourceParser> BfResourceParserIs( String const& switchConf );

    /// For the creators; an entity lives on the heap.
    explicit BfResourceParser( String const& switchConf );

    /// The parser's module, index 3.
    Zel::TypeId fwkType() const override;
    ~BfResourceParser() override;

    /// Path of the switch configuration, as given; never changes.
    String const& switchConf() const { return switchConf_; }

  private:
    String const switchConf_;

    /// Path of the context file for each set of pipes, "context_file". Pipe p is bit p modulo 32. The look-up
    /// is by the exact mask; of several pipelines with the same pipes the last one counts, the others are not
    /// read.
    ZEL_ORDERED_MAP( contextFile, ZelContextFile )

  public:
    /// "runtime_config" of the first device; empty when there is none. When it is not empty, the handles of
    /// each context file carry its lowest pipe in their upper four bits.
    String const& bfrtConfig() const { return bfrtConfig_; }
    void bfrtConfigIs( String path ) { bfrtConfig_ = std::move( path ); }

    /// Number of slots of the shared hit-bit space that tables have taken so far.
    U32 hitBitSmashEntries() const { return hitBitSmashEntries_; }
    void hitBitSmashEntriesIs( U32 entries ) { hitBitSmashEntries_ = entries; }

  private:
    String bfrtConfig_;
    U32 hitBitSmashEntries_ = 0;

    // Records in the order of the files and, within a file, of its elements.
    ZEL_SEQUENCE( bfResources, RecordSequence<BfResource> )
    ZEL_SEQUENCE( bfTables, RecordSequence<BfTableInfo> )
    ZEL_SEQUENCE( bfCounters, RecordSequence<BfTableCounterInfo> )
    ZEL_SEQUENCE( bfMeters, RecordSequence<BfTableMeterInfo> )
    ZEL_SEQUENCE( bfWreds, RecordSequence<BfTableWredInfo> )
    ZEL_SEQUENCE( bfRegisterInfos, RecordSequence<BfRegisterInfo> )
    ZEL_SEQUENCE( bfLearnQuantaInfos, RecordSequence<BfLearnQuantaInfo> )
    ZEL_SEQUENCE( bfActions, RecordSequence<BfActionInfo> )

    /// Flexible headers and dynamic hash calculations by name.
    ZEL_HASH_MAP( bfHeaders, String, BfHeaderInfo )
    ZEL_HASH_MAP( bfDynamicHashInfo, String, BfDynamicHashInfo )

    /// Bytes of PHV container that a field needs at most in any stage of any file, by field name: its
    /// "field_width" in "phv_allocation" modulo 32.
    ZEL_ORDERED_MAP( ingressPhvContainers, ZelIngressPhvContainers )
    ZEL_ORDERED_MAP( egressPhvContainers, ZelEgressPhvContainers )

    /// Every placed table by its handle; of tables with the same handle the last one. Also says which one
    /// references a counter, meter or register.
    ZEL_HASH_MAP_OF_TYPE( resourceHandles, ResourceHandles, U32, BfZelResource )

    /// From a resource's name to the one placed table whose actions name it in "indirect_resources"; the
    /// names that several placed tables have so named.
    ZEL_HASH_MAP( parentTable, String, String )
    ZEL_HASH_SET( multipleParentTables, String )

  public:
    /// True from the start of reading on.
    bool initialized() const { return initialized_; }

    /// A P4 field name as a plain identifier: every "$" with the decimal digits behind it becomes "_1_",
    /// whatever the digits; then every ".", "[" and "]" becomes "_". Nothing else changes: "a$12.b[3]" gives
    /// "a_1__b_3_". Reads no state. Linear.
    String normalizeFieldName( String const& name ) const;

  private:
    void handleInitialized();
    void parseSwitchConf();
    void parseContextFile( ZelContextFile const& entry );
    void doPrepareToDie();

    bool initialized_ = false;
};

/// Makes a parser for a switch configuration's path; returns it complete, notifications on.
BFRESOURCEINFO_EXPORT Zel::Ptr<BfResourceParser> bfResourceParserFactory( String const& switchConf );

} // namespace BfResourceInfo
