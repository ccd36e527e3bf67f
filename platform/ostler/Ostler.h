#pragma once

#include "ostler/DeviceProfile.h"
#include "vessa/Export.h"

namespace Ostler {

/// How the reading of a switch configuration ended.
struct VESSA_EXPORT Status {
    String reason;        ///< what was expected and what was found; empty when all is well
    String file;          ///< the configuration's path as given
    U32 line = 0;         ///< from 1; 0 when no place in the file is to blame (it cannot be read)
    U32 column = 0;       ///< in bytes, from 1; 0 with line 0
    String expected = {}; ///< of the reason: "\"pipes\" to be an array"; empty for a file that is no JSON
    String found = {};    ///< of the reason: "a number"; empty for something that is missing

    bool ok() const { return reason.empty(); }
    /// "FILE:LINE:COLUMN: REASON", "FILE: REASON" without a place, "" when ok.
    String text() const;
};

} // namespace Ostler

/// The process-wide context: the device profile that was read last and how that reading ended. Not locked:
/// one thread initialises and reads it at a time.
struct OstlerContext {
    Ostler::DeviceProfile profile;
    Ostler::Status status;
};

namespace Ostler {

/// The one context of the process; never null, never destroyed.
VESSA_EXPORT OstlerContext* sdkContext();

/// Reads a switch configuration into context->profile and returns, and keeps in context->status, how it
/// ended. Whatever is wrong (no such file, no valid JSON, a missing or wrongly typed member, more than 255
/// devices or pipelines, a pipe that is no unsigned 32-bit number) leaves a profile without devices. Relative
/// paths in the file are resolved against its folder; an empty path stays empty; members that are not known
/// are ignored.
///
/// The three texts in the middle (installation folder, board, chip) are not used; pass null.
VESSA_EXPORT Status initializeDeviceProfileFromConfig( OstlerContext* context, char* installFolder,
                                                       char* board, char* chip, char const* switchConf );

} // namespace Ostler
