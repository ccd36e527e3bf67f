#pragma once

#include "inspect/rows/Row.h"

#include <ostream>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

namespace Bfri {

/// The one object that every JSON answer is. Its first member is "format", the version of this layout; the
/// members that follow are written as they come, so that a whole model need not be there at once.
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

/// A row as the whole text of one object, for a format that is not ours.
void printJsonObject( std::ostream& out, Row const& row );

} // namespace Bfri
