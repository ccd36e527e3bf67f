#pragma once

// What the tests of the inspector share: files in a folder of their own, and models that a test fills.

#include "inspect/load/Load.h"
#include "tests/support/ContextBuilder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <rapidjson/document.h>
#include <vector>

/// Runs each test in an empty folder, so that paths in outputs are short and the same everywhere.
class InFolder : public testing::Test {
  protected:
    InFolder();
    ~InFolder() override;

  private:
    std::filesystem::path const former_;
    std::filesystem::path const folder_;
};

void writeFile( String const& path, String const& text );

/// Writes "switch.conf" for one pipeline on pipes 0 and 1 with that context file.
void writeSwitchConf( String const& contextFile );

/// The elements of "tables" in a context file that is otherwise as empty as one can be.
String contextOf( String const& tables );

/// A match table that can be read. The test adds what follows its last member: ", ..." or nothing.
String matchTable( String const& name, unsigned handle, String const& more = "" );

/// A context file with records of every kind. The match table is "pipe.acl"; the others have the names of
/// what they are.
Support::ContextBuilder completeContext();

/// A context file with everything that can refer to a table; its match table is "pipe.acl".
Support::ContextBuilder referringContext();

/// A record with a name and a handle.
template<class Record>
Record named( String const& name, U32 handle = 0 ) {
    Record record;
    record.name = name;
    record.handle = handle;
    return record;
}

/// A configuration whose model a test may change.
struct TestConfiguration : Bfri::Configuration {
    BfResourceInfo::BfResourceParser& parser() const { return *model->parser(); }
};
using ConfigurationPtr = std::shared_ptr<TestConfiguration>;

/// That of "switch.conf", with a survey. Needs InFolder.
ConfigurationPtr loaded();

/// One without devices, for a test to fill. Needs InFolder.
ConfigurationPtr emptyModel();

/// The model of a context file on pipes 0 and 1, read from "context.json". Needs InFolder.
ConfigurationPtr modelOf( Support::ContextBuilder const& context );

/// A value in one line of JSON, for comparing.
String compact( rapidjson::Value const& value );
