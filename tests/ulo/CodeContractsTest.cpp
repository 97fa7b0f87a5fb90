#include "TestSupport/ExpectThrowMessage.h"
#include "ulo/rtl/CodeContracts.h"

#include <boost/shared_ptr.hpp>

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>

namespace {

using code_contracts::ContractViolationException;
using code_contracts::InvariantViolationException;
using code_contracts::NullPointerException;
using code_contracts::RequireViolationException;
using LocalizationManager::UloCallFailedException;

const char kFile[] = "tests/ulo/CodeContractsTest.cpp";

const int kRequireLine = __LINE__ + 2;
const int* RequireValue(const int* resourceProvider) {
    return ULO_REQUIRE_NOT_NULL(resourceProvider);
}

const int kInvariantLine = __LINE__ + 3;
template <class Pointer>
void InvariantValue(const Pointer& pointer) {
    ULO_INVARIANT_NOT_NULL(pointer);
}

const int* RequireValueAtFixedPlace(const int* rootLocalizationUri) {
    return ULO_REQUIRE_NOT_NULL_AT(rootLocalizationUri, "File/FileResourceProvider", 111);
}

int calls = 0;
std::int32_t CountedCall(std::int32_t code) {
    ++calls;
    return code;
}

const int kCheckLine = __LINE__ + 2;
void CheckCountedCall(std::int32_t code) {
    ULO_CHECK_CALL(CountedCall(code), "Cannot open file");
}

void CheckAtFixedPlace(std::int32_t code) {
    ULO_CHECK_CALL_AT(CountedCall(code), "root localization URI has to be directory",
                      "File/FileResourceProvider", 111);
}

std::string ContractMessage(const std::string& checked, const std::string& signature,
                            const std::string& file, int line, const std::string& description) {
    return "Contract Violation! Violated argument '" + checked + "' at " + signature + " at " +
           file + ":" + std::to_string(line) + "Description: " + description;
}

TEST(CodeContractsTest, NullRequiredPointerNamesArgumentFunctionFileAndLine) {
    // Nothing separates the line number from "Description: ".
    EXPECT_THROW_MSG(
        RequireValue(nullptr), NullPointerException<RequireViolationException>,
        ContractMessage("resourceProvider", "const int* {anonymous}::RequireValue(const int*)",
                        kFile, kRequireLine, "unexpected null pointer"));
}

TEST(CodeContractsTest, FixedFileAndLineReplaceTheRealOnes) {
    EXPECT_THROW_MSG(RequireValueAtFixedPlace(nullptr),
                     NullPointerException<RequireViolationException>,
                     ContractMessage("rootLocalizationUri",
                                     "const int* {anonymous}::RequireValueAtFixedPlace(const int*)",
                                     "File/FileResourceProvider", 111, "unexpected null pointer"));
}

TEST(CodeContractsTest, NullInvariantPointerThrowsTheInvariantForm) {
    EXPECT_THROW_MSG(InvariantValue(std::shared_ptr<int>()),
                     NullPointerException<InvariantViolationException>,
                     ContractMessage("pointer",
                                     "void {anonymous}::InvariantValue(const Pointer&) [with "
                                     "Pointer = std::shared_ptr<int>]",
                                     kFile, kInvariantLine, "unexpected null pointer"));
}

TEST(CodeContractsTest, NonNullPointerIsReturnedAsItIs) {
    const int value = 7;
    EXPECT_EQ(&value, RequireValue(&value));

    const auto shared = std::make_shared<int>(1);
    EXPECT_EQ(&shared, &code_contracts::RequireNotNull(shared, ULO_CODE_CONTRACTS_LOCATION(x)));
    const boost::shared_ptr<int> boostShared(new int(2));
    EXPECT_EQ(&boostShared,
              &code_contracts::InvariantNotNull(boostShared, ULO_CODE_CONTRACTS_LOCATION(x)));
    EXPECT_NO_THROW(InvariantValue(boostShared));
    EXPECT_THROW(InvariantValue(boost::shared_ptr<int>()),
                 NullPointerException<InvariantViolationException>);
    EXPECT_THROW(InvariantValue(std::unique_ptr<int>()),
                 NullPointerException<InvariantViolationException>);
}

TEST(CheckCallTest, SuccessCodesPass) {
    calls = 0;
    EXPECT_NO_THROW(CheckCountedCall(ulo::kResultOk));
    EXPECT_NO_THROW(CheckCountedCall(ulo::kResultFalse));
    EXPECT_NO_THROW(CheckCountedCall(0x7FFFFFFF));
    EXPECT_EQ(3, calls);
}

TEST(CheckCallTest, FailureCodeNamesTheExpressionOnce) {
    calls = 0;
    EXPECT_THROW_MSG(
        CheckCountedCall(ulo::kResultNotFound), UloCallFailedException,
        ContractMessage("CountedCall(code)", "void {anonymous}::CheckCountedCall(int32_t)", kFile,
                        kCheckLine, "Cannot open file, error: Not found"));
    EXPECT_EQ(1, calls);
}

TEST(CheckCallTest, FixedFileAndLineReplaceTheRealOnes) {
    EXPECT_THROW_MSG(
        CheckAtFixedPlace(ulo::kResultPlatformPathNotFound), UloCallFailedException,
        ContractMessage("CountedCall(code)", "void {anonymous}::CheckAtFixedPlace(int32_t)",
                        "File/FileResourceProvider", 111,
                        "root localization URI has to be directory, error: Path "
                        "not found"));
}

}  // namespace
