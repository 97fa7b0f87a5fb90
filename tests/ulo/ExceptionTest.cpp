#include "ulo/Exception.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

namespace ulo {
namespace {

// A deeper class, to show that copies keep the most derived type, not RuntimeError.
class ServiceError : public ExceptionBase<ServiceError, RuntimeError> {
  public:
    using ExceptionBase::ExceptionBase;
};

std::u16string Description(const Exception& error) {
    return error.GetDescription().ToStdString();
}

TEST(ExceptionTest, RuntimeErrorWhatIsTheClassNameNotTheMessage) {
    const RuntimeError error("include/ulo/rtl/objbase", 126, 0,
                             u"GetAllocator error: can't get interface");
    EXPECT_STREQ("RuntimeError", error.what());
    EXPECT_EQ(u"GetAllocator error: can't get interface", Description(error));
    EXPECT_STREQ("include/ulo/rtl/objbase", error.SourceFile());
    EXPECT_EQ(126, error.Line());
    EXPECT_EQ(0, error.Value());
    EXPECT_EQ(nullptr, error.InnerException());
}

TEST(ExceptionTest, ResultCodeExceptionCarriesItsCode) {
    const ResultCodeException error("src/Module.cpp", 7, kResultNotImplemented);
    EXPECT_EQ(kResultNotImplemented, error.Code());
    EXPECT_STREQ("ResultCodeException", error.what());
    EXPECT_EQ(u"Not implemented", Description(error));
}

TEST(ExceptionTest, CloneKeepsTheDynamicType) {
    const ServiceError error("a.cpp", 1, 0, u"service");
    const Exception& base = error;
    const std::unique_ptr<Exception> clone(base.Clone());
    ASSERT_NE(nullptr, dynamic_cast<ServiceError*>(clone.get()));
    EXPECT_EQ(u"service", Description(*clone));
    EXPECT_STREQ("RuntimeError", clone->what());
}

TEST(ExceptionTest, InnerExceptionIsDeepCopiedAndOwned) {
    auto outer = std::make_unique<RuntimeError>(
        "outer.cpp", 10, 0, u"outer", ResultCodeException("inner.cpp", 20, kResultNotFound));
    const Exception* originalInner = outer->InnerException();
    ASSERT_NE(nullptr, originalInner);

    const RuntimeError copy(*outer);
    const std::unique_ptr<Exception> clone(outer->Clone());
    // The original and its inner exception go first; the copies must not refer to them.
    outer.reset();

    for (const Exception* holder :
         {static_cast<const Exception*>(&copy), static_cast<const Exception*>(clone.get())}) {
        const Exception* inner = holder->InnerException();
        ASSERT_NE(nullptr, inner);
        EXPECT_NE(originalInner, inner);
        const auto* code = dynamic_cast<const ResultCodeException*>(inner);
        ASSERT_NE(nullptr, code);
        EXPECT_EQ(kResultNotFound, code->Code());
        EXPECT_STREQ("inner.cpp", code->SourceFile());
        EXPECT_EQ(u"Not found", Description(*code));
    }
}

TEST(ExceptionTest, ThrowKeepsTheDynamicTypeAndOwnsItsInnerException) {
    try {
        const ServiceError original("outer.cpp", 3, 0, u"thrown",
                                    RuntimeError("inner.cpp", 2, 0, u"inner"));
        static_cast<const Exception&>(original).Throw();
    } catch (const ServiceError& caught) {
        // The original and its inner exception are gone here.
        EXPECT_EQ(u"thrown", Description(caught));
        EXPECT_EQ(3, caught.Line());
        ASSERT_NE(nullptr, caught.InnerException());
        EXPECT_EQ(u"inner", Description(*caught.InnerException()));
        return;
    } catch (...) {
    }
    ADD_FAILURE() << "ServiceError was not thrown";
}

TEST(ExceptionTest, MoveTakesTheInnerException) {
    RuntimeError source("a.cpp", 1, 0, u"moved", RuntimeError("b.cpp", 2, 0, u"inner"));
    const Exception* inner = source.InnerException();
    const RuntimeError target(std::move(source));
    EXPECT_EQ(inner, target.InnerException());
    EXPECT_EQ(nullptr, source.InnerException());
    EXPECT_EQ(u"moved", Description(target));
}

}  // namespace
}  // namespace ulo
