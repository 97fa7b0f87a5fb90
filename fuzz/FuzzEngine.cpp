// Fuzzes the text engine as a whole: one input holds a plural rule file, the common texts and
// a scope's texts; the pipeline builds them and every key is resolved with numeric
// parameters. Any input must end in text or in one of the engine's documented errors; a crash,
// a hang or any other exception is a finding. The same files are also parsed and compiled into
// dictionaries, as the tools see them: the build must fail with the same error, and every key
// of either file must resolve to the same text or fail with the same error, as through the
// pipeline's compact stores.
//
// Input layout: byte 0 picks the language, byte 1 whether its first subtag is "br"; the rest
// is split at the bytes 0x01 into the rule file, the common texts and the scope's texts (all
// UTF-8, decoded leniently as localization files are). An empty rule file means none.

#include "StringLocalizing/Compiling/CyclicReferenceException.h"
#include "StringLocalizing/Compiling/ExpansionLimitException.h"
#include "StringLocalizing/Model/KeyNotFoundException.h"
#include "StringLocalizing/Model/LanguageName.h"
#include "StringLocalizing/Parsing/ParseLocFile.h"
#include "StringLocalizing/Parsing/ParsingException.h"
#include "StringLocalizing/Pipeline/PipelineSteps.h"
#include "StringLocalizing/Pipeline/ResourceProcessingPipeline.h"
#include "StringLocalizing/Resolving/KeyResolver.h"
#include "StringLocalizing/Resolving/PluralResolver.h"
#include "ulo/rtl/Utf8Decoder.h"

#include <boost/make_shared.hpp>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <vector>

namespace {

namespace SL = LocalizationManager::StringLocalizing;
using localization_manager::Culture;

std::u16string Decode(const std::uint8_t* data, std::size_t size) {
    std::u16string text(size, u'\0');
    const std::size_t length =
        ulo::DecodeUtf8(reinterpret_cast<const char*>(data), size, text.data(), text.size());
    text.resize(length);
    return text;
}

class InMemoryProvider : public SL::Pipeline::IResourceProvider {
  public:
    std::u16string ruleFile;
    std::u16string commonText;
    std::u16string scopeText;

    SL::Pipeline::ResourceFileText GetLocalizationText(const std::u16string& scope,
                                                       const Culture&) override {
        return {scope == u"common" ? commonText : scopeText, scope + u".lt"};
    }
    bool HasPluralFormRules(const SL::Model::PluralFormRuleId&) override {
        return !ruleFile.empty();
    }
    SL::Pipeline::ResourceFileText GetPluralFormRulesText(
        const SL::Model::PluralFormRuleId&) override {
        return {ruleFile, u"Plural.rule"};
    }
    std::u16string GetBinaryResourcePath(const std::u16string&, const Culture&,
                                         const std::u16string&) override {
        return {};
    }
};

// Answers every parameter with the next number of a spread that reaches every rule branch and
// the ends of the 64-bit range.
class NumberResolver : public SL::Resolving::IParamResolver {
  public:
    std::u16string ResolveParam(const std::u16string&) override {
        static const char16_t* const kNumbers[] = {u"0",
                                                   u"1",
                                                   u"2",
                                                   u"3",
                                                   u"5",
                                                   u"11",
                                                   u"12",
                                                   u"21",
                                                   u"22",
                                                   u"100",
                                                   u"101",
                                                   u"111",
                                                   u"-1",
                                                   u"-2",
                                                   u"-11",
                                                   u"1000001",
                                                   u"9223372036854775807",
                                                   u"-9223372036854775808"};
        return kNumbers[next_++ % (sizeof(kNumbers) / sizeof(kNumbers[0]))];
    }

    // Starts the spread again, so that two resolutions see the same numbers.
    void Restart() { next_ = 0; }

  private:
    std::size_t next_ = 0;
};

[[noreturn]] void Fail(const char* kind, const char* what) {
    std::fprintf(stderr, "fuzz_engine: unexpected %s: %s\n", kind, what);
    std::abort();
}

// How a step ended: its text, or the type and message of what it threw.
struct Outcome {
    bool failed = false;
    std::u16string text;
    std::string error;
    std::exception_ptr exception;

    const std::exception* Error() const {
        try {
            std::rethrow_exception(exception);
        } catch (const std::exception& error) {
            return &error;
        } catch (...) {
            return nullptr;
        }
    }
    bool operator==(const Outcome& other) const {
        return failed == other.failed && text == other.text && error == other.error;
    }
};

template <typename Step>
Outcome OutcomeOf(Step step) {
    Outcome outcome;
    try {
        outcome.text = step();
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        outcome.failed = true;
        outcome.error = std::string(typeid(error).name()) + ": " + error.what();
        outcome.exception = std::current_exception();
    }
    return outcome;
}

// The texts parsed and compiled into dictionaries, in the pipeline's order of steps, and a
// key resolved the way the pipeline resolves it: the scope's entry, else the common one.
struct Dictionaries {
    boost::shared_ptr<SL::Model::ResourceDictionary> common;
    boost::shared_ptr<SL::Model::ResourceDictionary> scope;
    boost::shared_ptr<NumberResolver> params = boost::make_shared<NumberResolver>();
    boost::shared_ptr<SL::Resolving::KeyResolver> keys;

    std::u16string Build(SL::Pipeline::IResourceProvider& provider, const Culture& culture) {
        const SL::Pipeline::CulturePluralRules plural =
            SL::Pipeline::LoadPluralFormRules(provider, culture);
        keys = boost::make_shared<SL::Resolving::KeyResolver>(
            params,
            boost::make_shared<SL::Resolving::PluralResolver>(params, plural.ruleId, plural.rules));
        common = SL::Pipeline::LoadScopeTexts(provider, u"common", culture);
        scope = SL::Pipeline::LoadScopeTexts(provider, u"scope", culture);
        SL::Pipeline::CompileCommonTexts(common);
        SL::Pipeline::CompileScopeTexts(scope, common);
        return {};
    }

    std::u16string Resolve(const std::u16string& key) {
        params->Restart();
        const auto found = scope->find(key);
        return keys->Resolve(found != scope->end() ? found->second : common->at(key));
    }
};

void Run(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return;
    }
    Culture culture;
    culture.languageId = data[0] % SL::Model::kLanguageCount;
    if (data[1] % 2 == 1) {
        culture.firstSubtag = "br";
    }

    std::vector<std::u16string> parts;
    std::size_t start = 2;
    for (std::size_t position = 2; position <= size; ++position) {
        if (position == size || (data[position] == 0x01 && parts.size() < 2)) {
            parts.push_back(Decode(data + start, position - start));
            start = position + 1;
        }
    }
    parts.resize(3);

    const auto provider = boost::make_shared<InMemoryProvider>();
    provider->ruleFile = parts[0];
    provider->commonText = parts[1];
    provider->scopeText = parts[2];
    const auto common = boost::make_shared<SL::Pipeline::CommonTexts>();
    const auto pipelineParams = boost::make_shared<NumberResolver>();
    std::optional<SL::Pipeline::ResourceProcessingPipeline> pipeline;
    const Outcome built = OutcomeOf([&] {
        pipeline.emplace(provider, pipelineParams, common, culture, u"scope", u"common");
        return std::u16string();
    });
    Dictionaries dictionaries;
    const Outcome builtAsDictionaries =
        OutcomeOf([&] { return dictionaries.Build(*provider, culture); });
    if (!(built == builtAsDictionaries)) {
        Fail("build outcome", (built.error + " | " + builtAsDictionaries.error).c_str());
    }
    if (built.failed) {
        // The engine's documented errors end the input; any other is rethrown as a finding.
        std::rethrow_exception(built.exception);
    }

    for (const SL::Model::ResourceDictionary* texts :
         {dictionaries.scope.get(), dictionaries.common.get()}) {
        for (const auto& entry : *texts) {
            pipelineParams->Restart();
            const Outcome answer = OutcomeOf([&] { return pipeline->GetString(entry.first); });
            const Outcome expected = OutcomeOf([&] { return dictionaries.Resolve(entry.first); });
            if (!(answer == expected)) {
                Fail("answer", (answer.error + " | " + expected.error).c_str());
            }
            if (answer.failed && !dynamic_cast<const std::logic_error*>(answer.Error())) {
                // Form-count mismatches, uncompiled references inside plural forms and
                // numbers that a rule file's entries do not cover are logic errors; others
                // are findings.
                std::rethrow_exception(answer.exception);
            }
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        Run(data, size);
    } catch (const SL::Parsing::ParsingException&) {
    } catch (const SL::Compiling::CyclicReferenceException&) {
    } catch (const SL::Compiling::ExpansionLimitException&) {
    } catch (const SL::Model::KeyNotFoundException&) {
    } catch (const std::bad_alloc&) {
    } catch (const std::exception& error) {
        Fail("exception", error.what());
    } catch (...) {
        Fail("exception", "not derived from std::exception");
    }
    return 0;
}
