#pragma once

#include "inspect/rows/Row.h"

#include <ostream>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

namespace Bfri {

/// Every JSON answer is one such object. Its first member is "format", the version of the layout; further
/// members are written at once, so that a whole model need not be in memory.
class JsonAnswer {
  public:
    explicit JsonAnswer( std::ostream& out );
    ~JsonAnswer();
    JsonAnswer( JsonAnswer const& ) = delete;
    JsonAnswer& operator=( JsonAnswer const& ) = delete;

    void member( std::string_view name, Value const& value );
    void members( Row const& row );

  private:
    void flush();

    std::ostream& out_;
    rapidjson::StringBuffer buffer_;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer_{ buffer_ };
};

/// Writes a row as one complete object, for formats other than ours.
void printJsonObject( std::ostream& out, Row const& row );

} // namespace Bfri
