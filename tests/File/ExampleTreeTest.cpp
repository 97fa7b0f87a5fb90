// The example localization tree read through the file resource provider and the pipeline, as
// the module will read it: the alternative directory, culture fallback, a plural rule file and
// binary resources in a scope's folder and in "Common".

#include "File/FileResourceProvider.h"
#include "StringLocalizing/Pipeline/ResourceProcessingPipeline.h"
#include "TestSupport/Cultures.h"
#include "TestSupport/ExampleTexts.h"
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
    params->Set(u"count", ulo::Utf8ToWide(Testing::kExampleCount));
    params->Set(u"folders", ulo::Utf8ToWide(Testing::kExampleFolders));
    for (const Testing::ExampleText& example : Testing::kExampleTexts) {
        EXPECT_EQ(example.text, Text(MakeCulture(example.languageId, example.firstSubtag),
                                     ulo::Utf8ToWide(example.scope), ulo::Utf8ToWide(example.key)))
            << example.cultureName << " " << example.scope << "/" << example.key;
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
