#include "resourceinfo/model/TypeModules.h"

#include "tests/resourceinfo/Fixtures.h"
#include "zel/Log.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace BfResourceInfo {
namespace {

using testing::ElementsAre;

std::vector<String> typeNames( Zel::TypeModule const& module ) {
    std::vector<String> names;
    for( Zel::TypeInfo const& type : module.types() )
        names.push_back( type.name );
    return names;
}

TEST( TypeModules, InterfacesModuleIsRegisteredBeforeTheParsers ) {
    auto const modules = Zel::typeModules();
    auto const interface = std::find( modules.begin(), modules.end(), &interfaceTypeModule() );
    auto const parser = std::find( modules.begin(), modules.end(), &parserTypeModule() );
    ASSERT_NE( interface, modules.end() );
    ASSERT_NE( parser, modules.end() );
    EXPECT_LT( interface, parser );
}

TEST( TypeModules, InterfaceStandsBehindTheSixEnumerations ) {
    EXPECT_THAT( typeNames( interfaceTypeModule() ),
                 ElementsAre( "BfResourceInfo::BfResourceFieldId", "BfResourceInfo::BfTableFieldId",
                              "BfResourceInfo::BfTableStringId", "BfResourceInfo::BfCounterFieldId",
                              "BfResourceInfo::BfMeterFieldId", "BfResourceInfo::BfWredFieldId",
                              "BfResourceInfo::BfResourceInfoIntf" ) );
}

TEST( TypeModules, ParserStandsBehindTheThreeValueTypes ) {
    EXPECT_THAT( typeNames( parserTypeModule() ),
                 ElementsAre( "BfResourceInfo::BfZelResource", "BfResourceInfo::BfPipeMask", "BfHeaderInfo",
                              "BfResourceInfo::BfResourceParser" ) );
}

TEST( TypeModules, EntitiesTellTheirTypes ) {
    auto const info = emptyInterface();
    EXPECT_EQ( info->fwkType(), ( Zel::TypeId{ &interfaceTypeModule(), 6 } ) );
    EXPECT_EQ( info->parser()->fwkType(), ( Zel::TypeId{ &parserTypeModule(), 3 } ) );
}

TEST( TypeModules, EntitiesHaveNoNotifiees ) {
    auto const info = emptyInterface();
    EXPECT_EQ( info->notifieeList(), nullptr );
    EXPECT_EQ( info->parser()->notifieeList(), nullptr );
}

TEST( TypeModules, SwitchConfigurationErrorIsRegisteredWordForWord ) {
    Zel::LogHandle const* const message = Zel::logHandle( "BFN_SWITCH_CONF_ERROR" );
    ASSERT_NE( message, nullptr );
    EXPECT_EQ( message->name, "BFN_SWITCH_CONF_ERROR" );
    EXPECT_EQ( message->severity, 4 );
    EXPECT_EQ( message->format, "There was an error in the provided switch.conf for profile %s: %s." );
    EXPECT_EQ( message->explanation,
               "If a switch.conf file is provided that isn't valid JSON or have the expected fields, Harvane "
               "will restart until the switch.conf file is corrected" );
    EXPECT_EQ( message->recommendedAction, "Correct the switch.conf file." );
    EXPECT_EQ( message->seconds, 0 );
    EXPECT_EQ( message->rate, 1.0 );
    EXPECT_EQ( message->burst, 0 );
    EXPECT_EQ( message->flags, 0 );
}

} // namespace
} // namespace BfResourceInfo
