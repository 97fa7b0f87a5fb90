// The example localization tree read through the file resource provider and the pipeline, as
// the module will read it: the alternative directory, culture fallback, a plural rule file and
// binary resources in a scope's folder and in "Common".

#include "File/FileResourceProvider.h"
#include "StringLocalizing/Pipeline/ResourceProcessingPipeline.h"
#include "TestSupport/Cultures.h"
#include "TestSupport/FakeParamResolver.h"
#include "ulo/rtl/TextConversion.h"

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <string>

namespace LocalizationManager::File {
namespace {

using localization_manager::Culture;
using StringLocalizing::Pipeline::ResourceProcessingPipeline;
using Testing::FakeParamResolver;
using Testing::MakeCulture;

const std::u16string kRoot = ulo::Utf8ToWide(LM_EXAMPLES_DIR "/localization");
const std::u16string kAlternative = ulo::Utf8ToWide(LM_EXAMPLES_DIR "/localization-alt");

struct ExampleTreeTest : ::testing::Test {
    boost::shared_ptr<FileResourceProvider> provider =
        boost::make_shared<FileResourceProvider>(kRoot, kAlternative);
    boost::shared_ptr<FakeParamResolver> params = boost::make_shared<FakeParamResolver>();

    std::string Text(const Culture& culture, const std::u16string& scope,
                     const std::u16string& key) {
        const ResourceProcessingPipeline pipeline(
            provider, params, boost::make_shared<StringLocalizing::Pipeline::CommonTexts>(),
            culture, scope, u"common");
        return ulo::WideToUtf8(pipeline.GetString(key));
    }
};

TEST_F(ExampleTreeTest, TextsFollowTheSearchOrder) {
    params->Set(u"count", u"3");
    params->Set(u"folders", u"2");
    const struct {
        Culture culture;
        std::u16string scope;
        std::u16string key;
        std::string text;
    } cases[] = {
        // The Russian rule file decides the forms.
        {MakeCulture(26), u"download", u"summary", "3 файла в 2 папках."},
        // The alternative directory's file replaces the root's.
        {MakeCulture(12), u"download", u"done", "Fertig! 🎉"},
        // en-US has its own settings, and nothing else: download falls back to "neutral".
        {MakeCulture(7, "US"), u"settings", u"theme", "Color scheme"},
        {MakeCulture(7, "US"), u"download", u"windowTitle", "Download – File Courier"},
        {MakeCulture(7, "GB"), u"settings", u"theme", "Colour scheme"},
        // Serbian (Latin) uses its built-in three forms.
        {MakeCulture(30), u"download", u"summary", "3 datoteke, broj fascikli: 2."},
    };
    for (const auto& testCase : cases) {
        EXPECT_EQ(testCase.text, Text(testCase.culture, testCase.scope, testCase.key))
            << ulo::WideToUtf8(testCase.scope) << "/" << ulo::WideToUtf8(testCase.key);
    }
}

TEST_F(ExampleTreeTest, BinaryResourcesComeFromTheScopeFolderOrCommon) {
    EXPECT_EQ(kRoot + u"/neutral/download/icon.svg",
              provider->GetBinaryResourcePath(u"download", MakeCulture(26), u"icon.svg"));
    EXPECT_EQ(kAlternative + u"/neutral/Common/logo.txt",
              provider->GetBinaryResourcePath(u"settings", MakeCulture(7, "US"), u"logo.txt"));
}

}  // namespace
}  // namespace LocalizationManager::File
