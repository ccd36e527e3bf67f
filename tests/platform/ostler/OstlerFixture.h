#pragma once

#include "ostler/Ostler.h"

#include <filesystem>
#include <string_view>

#include <gtest/gtest.h>

/// Tests that read switch configurations from a folder of their own, into a context of their own.
class OstlerFixture : public testing::Test {
  protected:
    OstlerFixture();
    ~OstlerFixture() override;

    /// Writes a configuration into the folder and reads it.
    Ostler::Status read( std::string_view text );
    /// Reads the configuration at a path.
    Ostler::Status readPath( std::string const& path );

    /// The path that read() writes.
    std::string file() const { return ( folder_ / "switch.conf" ).string(); }

    std::filesystem::path folder_;
    OstlerContext context_;
};
