// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// The names of fields in scripts.

#include <string>

#include <gtest/gtest.h>

#include "Platform/PDF/Forms/ScriptNames.h"

namespace quirebind {
namespace {

/// The script when the root fields "a" and "total" have new names.
std::string renamed(const std::string& script) {
    FieldRenames renames;
    renames.add("a", "_2");
    renames.add("total", "_3");
    return renameFieldsInScript(script, renames).value_or("unchanged");
}

TEST(ScriptNames, areReplacedWhereAFieldIsAskedFor) {
    EXPECT_EQ(renamed("this.getField(\"a\").value"), "this.getField(\"a_2\").value");
    EXPECT_EQ(renamed("getField ( 'a.b.c' )"), "getField ( 'a_2.b.c' )");
    EXPECT_EQ(renamed("x = getField('a') + getField('b') + getField('total.x')"),
              "x = getField('a_2') + getField('b') + getField('total_3.x')");
    EXPECT_EQ(renamed("getField('a.' + i)"), "getField('a_2.' + i)");
}

TEST(ScriptNames, stayWhereTheyAreNotThoseOfRenamedFields) {
    EXPECT_EQ(renamed("getField('b')"), "unchanged");
    EXPECT_EQ(renamed("getField('ab')"), "unchanged");
    EXPECT_EQ(renamed("getField('b.a')"), "unchanged");
    EXPECT_EQ(renamed("getField('a' + i)"), "unchanged");
    EXPECT_EQ(renamed("getField(a)"), "unchanged");
    EXPECT_EQ(renamed("myGetField('a'); getFields('a'); 'a'"), "unchanged");
    EXPECT_EQ(renamed(""), "unchanged");
}

TEST(ScriptNames, areReplacedInCalculations) {
    EXPECT_EQ(renamed("AFSimple_Calculate(\"SUM\", new Array (\"a\", \"b\", \"total.x\"));"),
              "AFSimple_Calculate(\"SUM\", new Array (\"a_2\", \"b\", \"total_3.x\"));");
    EXPECT_EQ(renamed("AFSimple_Calculate('AVG', 'a, b,total')"),
              "AFSimple_Calculate('AVG', 'a_2, b,total_3')");
    EXPECT_EQ(renamed("AFSimple_Calculate('total', ['a' + i, 'x' + 'a.b']); f('a')"), "unchanged");
}

TEST(ScriptNames, areReplacedWhereFieldsAreReset) {
    EXPECT_EQ(renamed("this.resetForm(['a', \"b\", 'total.x']); g('a')"),
              "this.resetForm(['a_2', \"b\", 'total_3.x']); g('a')");
    EXPECT_EQ(renamed("resetForm(new Array(\"a\"))"), "resetForm(new Array(\"a_2\"))");
    EXPECT_EQ(renamed("this.resetForm(); 'a'"), "unchanged");
}

TEST(ScriptNames, areLookedForInWhateverAScriptIs) {
    EXPECT_EQ(renamed("getField("), "unchanged");
    EXPECT_EQ(renamed("getField('a"), "getField('a_2");
    EXPECT_EQ(renamed("getField('a\\"), "unchanged");
    EXPECT_EQ(renamed("AFSimple_Calculate('"), "unchanged");
    EXPECT_EQ(renamed("AFSimple_Calculate((((('a'"), "AFSimple_Calculate((((('a_2'");
}

}  // namespace
}  // namespace quirebind
