#pragma once

// Parts of the library that its tests use.

#include "resourceinfo/BfResourceInfoIntf.h"
#include "tests/support/ContextBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <iosfwd>
#include <map>

namespace BfResourceInfo {

/// A folder for a switch configuration, "switch.conf", and its context files.
class SwitchFolder : public Support::TemporaryFolder {
  public:
    /// Writes a configuration and returns its path.
    String conf( Support::SwitchConfBuilder const& conf ) const {
        return write( "switch.conf", conf.text() );
    }
    /// The same for one device.
    String conf( Support::DeviceBuilder const& device ) const {
        return conf( Support::SwitchConfBuilder().device( device ) );
    }
    /// The same for one context file, "context.json", for pipe 0.
    String conf( Support::ContextBuilder const& context ) const {
        write( "context.json", context.text() );
        return conf( Support::DeviceBuilder().pipeline( "context.json", { 0 } ) );
    }
};

/// A parser and an interface without anything in their models.
Zel::Ptr<BfResourceParser> emptyParser();
Zel::Ptr<BfResourceInfoIntf> emptyInterface();

/// All that a parser holds but the paths of its files, as a text: every field of every record, in order, what
/// is hash-keyed sorted by key. Two models are equal when their texts are.
String modelText( BfResourceParser const& parser );

/// Live allocations of every type that the library allocates, by name.
using LiveAllocations = std::map<String, Vessa::U64>;
LiveAllocations liveAllocations();

} // namespace BfResourceInfo
