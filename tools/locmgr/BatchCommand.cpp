#include "CommandSupport.h"
#include "Commands.h"
#include "ModuleSession.h"
#include "ParamResolver.h"
#include "localization_manager/host/StringConversion.h"
#include "ulo/ResultCode.h"

#include <cstdint>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace locmgr {

namespace {

namespace host = localization_manager::host;
using nlohmann::json;

struct Request {
    std::string scope;
    std::string culture;
    std::string key;
    std::vector<std::pair<std::string, std::string>> params;
};

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

std::string StringField(const json& request, const char* name) {
    const auto found = request.find(name);
    if (found == request.end() || !found->is_string()) {
        throw std::invalid_argument(std::string("\"") + name + "\" must be a string");
    }
    return found->get<std::string>();
}

Request ParseRequest(const std::string& line) {
    const json request = json::parse(line);
    if (!request.is_object()) {
        throw std::invalid_argument("a request must be a JSON object");
    }
    Request parsed{StringField(request, "scope"),
                   StringField(request, "culture"),
                   StringField(request, "key"),
                   {}};
    const auto params = request.find("params");
    if (params == request.end() || params->is_null()) {
        return parsed;
    }
    if (!params->is_object()) {
        throw std::invalid_argument("\"params\" must be an object");
    }
    for (const auto& [name, value] : params->items()) {
        if (value.is_string()) {
            parsed.params.emplace_back(name, value.get<std::string>());
        } else if (value.is_number()) {
            parsed.params.emplace_back(name, value.dump());
        } else {
            throw std::invalid_argument("parameter \"" + name + "\" must be a string or a number");
        }
    }
    return parsed;
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
    Batch(ModuleSession& session, std::optional<Failure> treeFailure)
        : session_(session), treeFailure_(std::move(treeFailure)) {}

    // The answer to one request line.
    Answer Respond(const std::string& line) {
        session_.TakeLines();
        Request request;
        try {
            request = ParseRequest(line);
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
    // so every request for it gets the module's error line again.
    std::optional<Failure> Localizer(const std::string& scope,
                                     const localization_manager::Culture& culture,
                                     localization_manager::ILocalizer*& localizer) {
        const LocalizerKey key{scope, culture.languageId, culture.firstSubtag.ToStdString(),
                               culture.secondSubtag.ToStdString()};
        auto found = localizers_.find(key);
        if (found == localizers_.end()) {
            InterfacePtr<localization_manager::ILocalizer> created;
            const std::int32_t code =
                session_.GetLocalizer(scope, culture, resolver_.Get(), created);
            if (ulo::Failed(code)) {
                return FailureOf(session_, code,
                                 "cannot get a localizer for scope '" + scope + "'");
            }
            found = localizers_.emplace(key, std::move(created)).first;
        }
        localizer = found->second.Get();
        return std::nullopt;
    }

    ModuleSession& session_;
    const std::optional<Failure> treeFailure_;
    const InterfacePtr<ParamResolver> resolver_ = ParamResolver::Create();
    std::map<LocalizerKey, InterfacePtr<localization_manager::ILocalizer>> localizers_;
};

bool IsBlank(const std::string& line) {
    return line.find_first_not_of(" \t\r") == std::string::npos;
}

int Run(const Options& options) {
    const std::string root = options.Required(kRootOption.name, "DIR");
    if (!options.Operands().empty()) {
        throw UsageError("batch reads its requests from standard input and takes no operands");
    }
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
    Batch batch(session, std::move(treeFailure));
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
    R"(usage: locmgr batch --root DIR [--alt DIR] [--module PATH]

Reads one JSON request per line from standard input and writes one JSON answer per request
to standard output, flushed at once:
  request:  {"scope": S, "culture": NAME, "key": K, "params": {NAME: VALUE, ...}}
  answer:   {"ok": true, "text": T}
        or  {"ok": false, "code": C, "error": LINE}
C is the result code as a number, LINE the module's error line for that request (or locmgr's
own message for a request the module never saw, such as a line that is not JSON). "params"
may be left out; its values are strings or numbers. Blank lines are skipped. Localizers are
kept per scope and culture for the whole run. The exit status is 1 when any request failed.

Options:
  --root DIR          the localization directory
  --alt DIR           an alternative directory, searched before the root
  --module PATH       the module to load (default: the one beside locmgr)

Example:
  echo '{"scope": "download", "culture": "ru", "key": "status", "params": {"count": 3}}' |
      locmgr batch --root examples/localization
)",
    {kRootOption, kAltOption, kModuleOption},
    &Run,
};

}  // namespace locmgr
