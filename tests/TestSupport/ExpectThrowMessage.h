#pragma once

// EXPECT_THROW_MSG(statement, ExceptionType, message): the statement throws exactly an
// ExceptionType (or a class derived from it) whose whole message (NUL characters included) equals
// `message`.

#include "ulo/rtl/MessageError.h"

#include <gtest/gtest.h>

#include <string>

#define EXPECT_THROW_MSG(statement, ExceptionType, message)                                     \
    do {                                                                                        \
        bool lmCaught_ = false;                                                                 \
        try {                                                                                   \
            statement;                                                                          \
        } catch (const ExceptionType& lmError_) {                                               \
            lmCaught_ = true;                                                                   \
            EXPECT_EQ(std::string(message), std::string(ulo::FullMessage(lmError_)));           \
        } catch (const std::exception& lmOther_) {                                              \
            ADD_FAILURE() << "expected " #ExceptionType ", got another exception: "             \
                          << lmOther_.what();                                                   \
            lmCaught_ = true;                                                                   \
        }                                                                                       \
        if (!lmCaught_) {                                                                       \
            ADD_FAILURE() << "expected " #ExceptionType ", nothing was thrown by: " #statement; \
        }                                                                                       \
    } while (false)
