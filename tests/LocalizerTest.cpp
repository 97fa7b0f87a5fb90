// The localizer's own contract, which no host can reach through the manager: Init refuses
// null shared parts with messages that name the argument and the fixed source line.

#include "Localizer.h"
#include "StringLocalizing/Pipeline/IResourceProvider.h"
#include "TestSupport/FakeServices.h"
#include "ulo/rtl/CodeContracts.h"

#include <boost/make_shared.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

using localization_manager::Localizer;
using LocalizationManager::Testing::FakeServiceLocator;
using testing::EndsWith;
using testing::StartsWith;

struct NoFiles : LocalizationManager::StringLocalizing::Pipeline::IResourceProvider {
    using ResourceFileText = LocalizationManager::StringLocalizing::Pipeline::ResourceFileText;
    using PluralFormRuleId = LocalizationManager::StringLocalizing::Model::PluralFormRuleId;

    ResourceFileText GetLocalizationText(const std::u16string&,
                                         const localization_manager::Culture&) override {
        throw std::runtime_error("no files");
    }
    bool HasPluralFormRules(const PluralFormRuleId&) override { return false; }
    ResourceFileText GetPluralFormRulesText(const PluralFormRuleId&) override {
        throw std::runtime_error("no files");
    }
    std::u16string GetBinaryResourcePath(const std::u16string&,
                                         const localization_manager::Culture&,
                                         const std::u16string&) override {
        throw std::runtime_error("no files");
    }
};

TEST(LocalizerTest, InitNamesTheFirstNullPartAndItsLine) {
    FakeServiceLocator locator;
    ulo::ObjectPtr<ulo::Object<Localizer>> localizer;
    ASSERT_EQ(ulo::kResultOk, ulo::Object<Localizer>::CreateInstance(&locator, localizer.Ref()));

    const boost::shared_ptr<Localizer::IResourceProvider> provider = boost::make_shared<NoFiles>();
    const auto dictionary = boost::make_shared<Localizer::CommonTexts>();
    const auto syncObject = boost::make_shared<ulo::CriticalSection>();
    const decltype(provider) noProvider;
    const decltype(dictionary) noDictionary;
    const decltype(syncObject) noSyncObject;

    struct Case {
        const char* argument;
        int line;
        boost::shared_ptr<Localizer::IResourceProvider> provider;
        boost::shared_ptr<Localizer::CommonTexts> dictionary;
        boost::shared_ptr<ulo::CriticalSection> syncObject;
    };
    const Case cases[] = {
        {"resourceProvider", 129, noProvider, noDictionary, noSyncObject},
        {"commonResourceDictionary", 130, provider, noDictionary, noSyncObject},
        {"commonResourceDictionarySyncObject", 131, provider, dictionary, noSyncObject},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.argument);
        try {
            localizer->Init(c.provider, c.dictionary, c.syncObject, ulo::string16_t(u"scope"),
                            localization_manager::Culture(), nullptr);
            ADD_FAILURE() << "Init accepted a null " << c.argument;
        } catch (
            const code_contracts::NullPointerException<code_contracts::InvariantViolationException>&
                error) {
            const std::string message = error.what();
            EXPECT_THAT(message, StartsWith(std::string("Contract Violation! Violated argument '") +
                                            c.argument +
                                            "' at void localization_manager::Localizer::Init("));
            EXPECT_THAT(message, EndsWith(" at LocalizationManager:" + std::to_string(c.line) +
                                          "Description: unexpected null pointer"));
        }
    }
}

}  // namespace

namespace {

// Reporting a failure for a culture outside the language table must not fail in its turn on
// the culture's name.
TEST(LocalizerTest, CultureOutsideTheLanguageTableIsReportedByNumber) {
    FakeServiceLocator locator;
    ulo::ObjectPtr<ulo::Object<Localizer>> localizer;
    ASSERT_EQ(ulo::kResultOk, ulo::Object<Localizer>::CreateInstance(&locator, localizer.Ref()));
    localization_manager::Culture culture;
    culture.languageId = 35;
    culture.firstSubtag = "x";
    localizer->Init(boost::make_shared<NoFiles>(), boost::make_shared<Localizer::CommonTexts>(),
                    boost::make_shared<ulo::CriticalSection>(), ulo::string16_t(u"dialogs"),
                    culture, nullptr);

    ulo::string16_t text;
    EXPECT_EQ(ulo::kResultUnspecifiedError, localizer->GetString(ulo::string16_t(u"key"), text));
    ASSERT_EQ(1u, locator.tracer.lines.size());
    EXPECT_EQ(
        "localization manager error: cannot create string localizer for scope dialogs culture "
        "<35>-x, error: no files",
        locator.tracer.lines[0]);
    EXPECT_EQ(300, locator.tracer.levels[0]);
}

}  // namespace
