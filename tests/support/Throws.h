#pragma once

#include <exception>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

/// Runs `body`, which must fail with exactly `Class`, and gives the text of the failure.
template <class Class, class Body> std::string ThrownText(Body body) {
    try {
        body();
    } catch (const Class& exception) {
        EXPECT_EQ(typeid(exception), typeid(Class)) << exception.what();
        return exception.what();
    } catch (const std::exception& exception) {
        ADD_FAILURE() << "another class: " << typeid(exception).name() << ": " << exception.what();
        return exception.what();
    }
    ADD_FAILURE() << "nothing was thrown";
    return {};
}

/// Runs `body`, which must fail with exactly `Class` and a text that `part` stands in.
template <class Class, class Body>
void ExpectThrown(std::string_view part, Body body) {
    const std::string text = ThrownText<Class>(body);
    EXPECT_NE(text.find(part), text.npos) << text << "\ninstead of\n" << part;
}

/// Like `ThrownText`, giving the name of the parameter that an argument failure names.
template <class Class, class Body> std::string ThrownParameter(Body body) {
    try {
        body();
    } catch (const Class& exception) {
        return exception.get_ParamName();
    } catch (const std::exception& exception) {
        ADD_FAILURE() << "another class: " << exception.what();
        return {};
    }
    ADD_FAILURE() << "nothing was thrown";
    return {};
}
