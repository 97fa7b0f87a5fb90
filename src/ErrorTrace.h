#pragma once

#include "localization_manager/Culture.h"
#include "ulo/IServiceLocator.h"

#include <string>
#include <string_view>

namespace localization_manager {

// Writes "localization manager error: " and `line` as one record to `tracer` at the error
// level, if there is a tracer and it grants a record for that level. Never throws: a line
// that cannot be written is dropped, since its writer is already reporting a failure.
void WriteErrorLine(ulo::ITracer* tracer, std::string_view line) noexcept;

// WriteErrorLine with the line that `buildLine()` returns; a line that cannot be built (memory
// exhausted) is dropped as well.
template <class LineBuilder>
void TraceError(ulo::ITracer* tracer, LineBuilder&& buildLine) noexcept {
    try {
        WriteErrorLine(tracer, buildLine());
    } catch (...) {
    }
}

// The whole message of the exception being handled, NUL characters included; "(null)" when it
// has none (or is not a std::exception). Call only while an exception is being handled.
std::string CurrentExceptionMessage();

// The culture as error lines print it ("ru-", "en-US", "sr-Latn-RS-x"); a language id outside
// the language table prints as its number in angle brackets, so that reporting a bad culture
// cannot fail in its turn.
std::string CultureTraceText(const Culture& culture);

}  // namespace localization_manager
