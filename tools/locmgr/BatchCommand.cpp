#include "BatchRequest.h"
#include "CommandSupport.h"
#include "Commands.h"
#include "ModuleSession.h"
#include "ParamResolver.h"
#include "localization_manager/host/StringConversion.h"
#include "ulo/ResultCode.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <iterator>
#include <list>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <system_error>
#include <tuple>
#include <utility>
#include <vector>

namespace locmgr {

namespace {

namespace host = localization_manager::host;
using nlohmann::json;

struct Failure {
    std::int32_t code;
    std::string error;
};

struct Answer {
    bool ok;
    std::string line;
};

// Invalid UTF-8 from a text must not stop the whole run: it becomes U+FFFD.
std::string Quote(const std::string& text) {
    return json(text).dump(-1, ' ', false, json::error_handler_t::replace);
}

Answer Success(const std::string& text) {
    return {true, "{\"ok\": true, \"text\": " + Quote(text) + "}"};
}

// The code as the unsigned number its hexadecimal form names (0x8000004B is 2147483723).
Answer Refusal(const Failure& failure) {
    return {false, "{\"ok\": false, \"code\": " +
                       std::to_string(static_cast<std::uint32_t>(failure.code)) +
                       ", \"error\": " + Quote(failure.error) + "}"};
}

// The module's error lines of the failed call, or, when it committed none, `fallback`.
Failure FailureOf(ModuleSession& session, std::int32_t code, const std::string& fallback) {
    std::string error;
    for (const TraceLine& line : session.TakeLines()) {
        if (line.level >= ulo::ITracer::kErrorLevel) {
            error += error.empty() ? line.text : "\n" + line.text;
        }
    }
    return {code, error.empty() ? fallback : error};
}

class Batch {
  public:
    // Keeps at most `maxLocalizers` (at least 1) localizers at a time.
    Batch(ModuleSession& session, std::optional<Failure> treeFailure, std::size_t maxLocalizers)
        : session_(session), treeFailure_(std::move(treeFailure)), maxLocalizers_(maxLocalizers) {}

    // The answer to one request line.
    Answer Respond(const std::string& line) {
        session_.TakeLines();
        BatchRequest request;
        try {
            request = ParseBatchRequest(line);
        } catch (const std::exception& error) {
            return Refusal(
                {ulo::kResultInvalidArgument, std::string("invalid request: ") + error.what()});
        }
        if (treeFailure_) {
            return Refusal(*treeFailure_);
        }
        localization_manager::Culture culture;
        std::int32_t code = session_.ConvertCulture(request.culture, culture);
        if (ulo::Failed(code)) {
            return Refusal(
                FailureOf(session_, code, "unknown culture name '" + request.culture + "'"));
        }
        localization_manager::ILocalizer* localizer = nullptr;
        if (const std::optional<Failure> failure = Localizer(request.scope, culture, localizer)) {
            return Refusal(*failure);
        }
        resolver_->Clear();
        for (const auto& [name, value] : request.params) {
            resolver_->Set(name, value);
        }
        ulo::string16_t text;
        code = localizer->GetString(host::ToFrameworkString(request.key), text);
        if (ulo::Failed(code)) {
            return Refusal(FailureOf(session_, code, "cannot get key '" + request.key + "'"));
        }
        return Success(host::ToUtf8(text));
    }

  private:
    using LocalizerKey = std::tuple<std::string, std::uint32_t, std::string, std::string>;

    // The localizer of a scope and culture, made on first use; a failed attempt is not kept,
    // so every request for it gets the module's error line again. Of the localizers made, the
    // maxLocalizers_ used most recently are kept; the one used longest ago is released when
    // another must be made. A released localizer is made again when it is asked for: the
    // texts are the same, only built anew.
    std::optional<Failure> Localizer(const std::string& scope,
                                     const localization_manager::Culture& culture,
                                     localization_manager::ILocalizer*& localizer) {
        LocalizerKey key{scope, culture.languageId, culture.firstSubtag.ToStdString(),
                         culture.secondSubtag.ToStdString()};
        const auto found = index_.find(key);
        if (found != index_.end()) {
            recent_.splice(recent_.begin(), recent_, found->second);
        } else {
            InterfacePtr<localization_manager::ILocalizer> created;
            const std::int32_t code =
                session_.GetLocalizer(scope, culture, resolver_.Get(), created);
            if (ulo::Failed(code)) {
                return FailureOf(session_, code,
                                 "cannot get a localizer for scope '" + scope + "'");
            }
            if (recent_.size() >= maxLocalizers_) {
                index_.erase(recent_.back().first);
                recent_.pop_back();
            }
            recent_.emplace_front(std::move(key), std::move(created));
            index_.emplace(recent_.front().first, recent_.begin());
        }
        localizer = recent_.front().second.Get();
        return std::nullopt;
    }

    using Recent =
        std::list<std::pair<LocalizerKey, InterfacePtr<localization_manager::ILocalizer>>>;

    ModuleSession& session_;
    const std::optional<Failure> treeFailure_;
    const std::size_t maxLocalizers_;
    const InterfacePtr<ParamResolver> resolver_ = ParamResolver::Create();
    // Most recently used first.
    Recent recent_;
    std::map<LocalizerKey, Recent::iterator> index_;
};

const OptionDefinition kMaxLocalizersOption =
    Valued("--max-localizers", "N", "keep at most N localizers at a time, N from 1 up")
        .Default("256");

// The value of --max-localizers: a decimal whole number from 1 up; throws UsageError otherwise.
std::size_t MaxLocalizersOption(const Options& options) {
    const std::string value = options.Value(kMaxLocalizersOption.name);
    std::size_t number = 0;
    const char* const end = value.data() + value.size();
    const auto [stop, error] = std::from_chars(value.data(), end, number);
    if (value.empty() || error != std::errc() || stop != end || number == 0) {
        throw UsageError(kMaxLocalizersOption.name + " needs a whole number from 1 up, not '" +
                         value + "'");
    }
    return number;
}

bool IsBlank(const std::string& line) {
    return line.find_first_not_of(" \t\r") == std::string::npos;
}

int Run(const Options& options) {
    const std::string root = options.Value(kRootOption.name);
    if (!options.Operands().empty()) {
        throw UsageError("batch reads its requests from standard input and takes no operands");
    }
    const std::size_t maxLocalizers = MaxLocalizersOption(options);
    ModuleSession session(options.Value(kModuleOption.name));
    // A tree that cannot be used fails every request alike, with the reason it failed.
    std::optional<Failure> treeFailure;
    const std::int32_t code = session.OpenTree(root, options.Value(kAltOption.name));
    if (ulo::Failed(code)) {
        treeFailure = FailureOf(
            session, code,
            "cannot use the localization tree at '" + root + "': " + DescribeResultCode(code));
    }

    int status = kExitOk;
    Batch batch(session, std::move(treeFailure), maxLocalizers);
    std::string line;
    while (std::getline(std::cin, line)) {
        if (IsBlank(line)) {
            continue;
        }
        const Answer answer = batch.Respond(line);
        if (!answer.ok) {
            status = kExitFailed;
        }
        // A driver may wait for each answer before it sends the next request.
        std::cout << answer.line << '\n' << std::flush;
    }
    return status;
}

}  // namespace

const Command kBatchCommand{
    "batch",
    "answer JSON Lines requests from standard input",
    "",
    R"(Reads one JSON request per line from standard input and writes one JSON answer per request
to standard output, flushed at once:
  request:  {"scope": S, "culture": NAME, "key": K, "params": {NAME: VALUE, ...}}
  answer:   {"ok": true, "text": T}
        or  {"ok": false, "code": C, "error": LINE}
C is the result code as a number, LINE the module's error line for that request (or locmgr's
own message for a request the module never saw, such as a line that is not JSON). "params"
may be left out; its values are strings or numbers. A string reaches the parameter resolver
as it is; a whole number as its plain decimal digits, however it is written (1000, 1e3 and
1000.0 all give "1000"), any other number exactly as written ("2.5", "1.5e-3"). Blank lines
are skipped. The exit status is 1 when any request failed.

A localizer is made for each scope and culture on first use and kept for later requests;
of those, the N used most recently are kept, so that a run over many scopes and cultures
stays within bounded memory. A localizer let go is made again when it is asked for, with
the same answers.
)",
    {kRootOption, kAltOption, kMaxLocalizersOption, kModuleOption},
    R"(  echo '{"scope": "download", "culture": "ru", "key": "status", "params": {"count": 3}}' |
      locmgr batch --root examples/localization
)",
    &Run,
};

}  // namespace locmgr
