#include "formula/fhCStack.h"
#include "runtime/VbError.h"
#include <gtest/gtest.h>

using ql::fhCStack;

namespace {

// Runs body, expects a run-time error and returns it.
template <class F> ql::VbError raised(F body) {
    try {
        body();
    } catch (const ql::VbError& e) {
        return e;
    }
    ADD_FAILURE() << "no error raised";
    return ql::VbError(0, QString(), QString());
}

TEST(fhCStack, ErrorNumbersAreTheSigned32BitForms) {
    EXPECT_EQ(ql::err::EvalFault, -2147221503L);
    EXPECT_EQ(ql::err::EvalBadToken, -2147221502L);
    EXPECT_EQ(static_cast<quint32>(ql::err::EvalFault), 0x80040001u);
    EXPECT_EQ(static_cast<quint32>(ql::err::EvalBadToken), 0x80040002u);
}

TEST(fhCStack, PushPopInReverseOrderWithNumbersAndTexts) {
    fhCStack s;
    EXPECT_EQ(s.StackSize(), 0);
    s.Push(1.5);
    s.Push(QStringLiteral("("));
    s.Push(7.0);
    EXPECT_EQ(s.StackSize(), 3);
    EXPECT_EQ(s.GetPopValue().toDouble(), 7.0);
    EXPECT_EQ(s.StackSize(), 3);
    EXPECT_EQ(s.Pop().toDouble(), 7.0);
    EXPECT_EQ(s.Pop().toString(), QStringLiteral("("));
    EXPECT_EQ(s.Pop().toDouble(), 1.5);
    EXPECT_EQ(s.StackSize(), 0);
}

TEST(fhCStack, KeepsContentsWhenItGrows) {
    fhCStack s;
    for (int i = 1; i <= 25; ++i)
        s.Push(double(i));
    EXPECT_EQ(s.StackSize(), 25);
    for (int i = 25; i >= 1; --i)
        EXPECT_EQ(s.Pop().toDouble(), double(i));
}

TEST(fhCStack, PopOnEmptyStackRaises) {
    fhCStack s;
    const auto e = raised([&] { s.Pop(); });
    EXPECT_EQ(e.number(), ql::err::EvalFault);
    EXPECT_EQ(e.description(), QStringLiteral("Pop method invoked on empty stack"));
    s.Push(1.0);
    s.Pop();
    EXPECT_EQ(raised([&] { s.Pop(); }).number(), ql::err::EvalFault);
}

TEST(fhCStack, GetPopValueOnEmptyStackRaises) {
    fhCStack s;
    const auto e = raised([&] { s.GetPopValue(); });
    EXPECT_EQ(e.number(), ql::err::EvalFault);
    EXPECT_EQ(e.description(), QStringLiteral("GetPopValue method invoked on empty stack"));
}

TEST(fhCStack, SixteenBitCapacityOverflowsAndLeavesTheStackAsItWas) {
    fhCStack s;
    for (int i = 0; i < 32760; ++i)
        s.Push(1.0);
    EXPECT_EQ(s.StackSize(), 32760);
    // The next slot would take the capacity past 32767.
    const auto e = raised([&] { s.Push(2.0); });
    EXPECT_EQ(e.number(), ql::err::Overflow);
    EXPECT_EQ(s.StackSize(), 32760);
    EXPECT_EQ(s.GetPopValue().toDouble(), 1.0);
}

} // namespace
