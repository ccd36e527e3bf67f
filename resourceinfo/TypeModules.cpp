#include "resourceinfo/model/TypeModules.h"

#include "resourceinfo/BfResourceInfoIntf.h"
#include "resourceinfo/parser/BfResourceParser.h"
#include "zel/Log.h"

namespace BfResourceInfo {

namespace {

using Zel::TypeInfo;
using Zel::TypeKind;

TypeInfo enumeration( String name, std::vector<String> enumerators ) {
    return { std::move( name ), TypeKind::enumeration, std::move( enumerators ), nullptr, 0 };
}

TypeInfo value( String name ) { return { std::move( name ), TypeKind::value, {}, nullptr, 0 }; }

/// An entity that is made from one string argument.
TypeInfo entity( String name, TypeInfo::Constructor construct ) {
    return { std::move( name ), TypeKind::entity, {}, construct, 1 };
}

std::vector<TypeInfo> interfaceTypes() {
    return {
        enumeration( "BfResourceInfo::BfResourceFieldId",
                     { "resourceHandle", "resourceType", "resourceSize", "resourceIngress", "resourceStages",
                       "resourceStageStart" } ),
        enumeration( "BfResourceInfo::BfTableFieldId",
                     { "tableHandle", "tableSize", "tableHitBitSupported", "tableIdleTimePrecision",
                       "tableHitBitSmashOffset", "tableMaxEntries", "tableMaxPartitions", "tableMaxPrios",
                       "tableHasActionProfile", "tableMaxAdtEntries", "tableMaxSelGroups",
                       "tableMaxSelEntries", "tableAdtHandle", "tableSelHandle" } ),
        enumeration( "BfResourceInfo::BfTableStringId",
                     { "tableAdtName", "tableSelName", "tableLogicalPipe" } ),
        enumeration( "BfResourceInfo::BfCounterFieldId",
                     { "counterHandle", "counterSize", "counterDirect", "counterBytes", "counterPackets" } ),
        enumeration( "BfResourceInfo::BfMeterFieldId",
                     { "meterHandle", "meterDirect", "meterPps", "meterHasPreColor" } ),
        enumeration( "BfResourceInfo::BfWredFieldId", { "wredHandle", "wredDirect" } ),
        entity( "BfResourceInfo::BfResourceInfoIntf",
                []( std::span<String const> arguments ) -> Zel::Ptr<Zel::PtrInterface> {
                    return BfResourceInfoIntf::BfResourceInfoIntfIs( arguments[ 0 ] );
                } ),
    };
}

std::vector<TypeInfo> parserTypes() {
    return {
        value( "BfResourceInfo::BfZelResource" ),
        value( "BfResourceInfo::BfPipeMask" ),
        value( "BfHeaderInfo" ),
        entity( "BfResourceInfo::BfResourceParser",
                []( std::span<String const> arguments ) -> Zel::Ptr<Zel::PtrInterface> {
                    return BfResourceParser::BfResourceParserIs( arguments[ 0 ] );
                } ),
    };
}

/// What loading the library registers, in this order. The message is for the agent to log; the wording is
/// fixed.
struct Registration {
    Registration() {
        interfaceTypeModule();
        parserTypeModule();
        Zel::logHandleIs( {
            .name = "BFN_SWITCH_CONF_ERROR",
            .severity = 4,
            .format = "There was an error in the provided switch.conf for profile %s: %s.",
            .explanation =
                "If a switch.conf file is provided that isn't valid JSON or have the expected fields, "
                "Harvane will restart until the switch.conf file is corrected",
            .recommendedAction = "Correct the switch.conf file.",
            .seconds = 0,
            .rate = 1.0,
            .burst = 0,
            .flags = 0,
        } );
    }
};

Registration const registration;

} // namespace

Zel::TypeModule const& interfaceTypeModule() {
    static Zel::TypeModule const& module = Zel::typeModuleIs( "BfResourceInfoIntf", interfaceTypes() );
    return module;
}

Zel::TypeModule const& parserTypeModule() {
    static Zel::TypeModule const& module = Zel::typeModuleIs( "BfResourceParser", parserTypes() );
    return module;
}

} // namespace BfResourceInfo
