// Fuzzes the text engine as a whole: one input holds a plural rule file, the common texts and
// a scope's texts; the pipeline builds them and every key is resolved with numeric
// parameters. Any input must end in text or in one of the engine's documented errors; a crash,
// a hang or any other exception is a finding.
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
#include "StringLocalizing/Pipeline/ResourceProcessingPipeline.h"
#include "ulo/rtl/Utf8Decoder.h"

#include <boost/make_shared.hpp>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <stdexcept>
#include <string>
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

  private:
    std::size_t next_ = 0;
};

[[noreturn]] void Fail(const char* kind, const char* what) {
    std::fprintf(stderr, "fuzz_engine: unexpected %s: %s\n", kind, what);
    std::abort();
}

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
    const SL::Pipeline::ResourceProcessingPipeline pipeline(
        provider, boost::make_shared<NumberResolver>(), common, culture, u"scope", u"common");

    SL::Model::ResourceDictionary scope;
    SL::Parsing::ParseLocFile(provider->scopeText, u"scope.lt", scope);
    const SL::Model::ResourceDictionary* commonTexts = common->Published().get();
    const SL::Model::ResourceDictionary* scopeTexts = &scope;
    for (const SL::Model::ResourceDictionary* dictionary : {scopeTexts, commonTexts}) {
        for (const auto& entry : *dictionary) {
            try {
                pipeline.GetString(entry.first);
            } catch (const std::logic_error&) {
                // Form-count mismatches, uncompiled references inside plural forms and numbers
                // that a rule file's entries do not cover.
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
