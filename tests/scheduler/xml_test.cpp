#include "scheduler/xml.h"

#include <gtest/gtest.h>

#include "base/failure.h"

namespace norvelis {
namespace {

TEST(Xml, AnElementWithoutParentIsDetachedInADocumentOfItsOwn) {
    bool append = true;
    const XmlNode element = CreateElement(nullptr, "schedule", append);
    EXPECT_FALSE(append);
    EXPECT_EQ(element.Name(), "schedule");
    ASSERT_TRUE(element.OwnerDocument());
    EXPECT_FALSE(element.OwnerDocument()->DocumentElement());
    EXPECT_EQ(element.OwnerDocument()->Name(), "");
    EXPECT_FALSE(element.OwnerDocument()->OwnerDocument());
}

TEST(Xml, AnElementWithAParentIsAppendedWhenAsked) {
    const XmlNode document = XmlNode::NewDocument();
    bool append = true;
    const XmlNode root = CreateElement(&document, "root", append);
    EXPECT_TRUE(append);
    ASSERT_TRUE(document.DocumentElement());
    EXPECT_EQ(document.DocumentElement()->Name(), "root");

    const XmlNode child = CreateElement(&root, "child", append);
    child.SetAttribute("a", "<&\"");
    append = false;
    const XmlNode loose = CreateElement(&root, "loose", append);
    EXPECT_EQ(root.Text(), R"(<root><child a="&lt;&amp;&quot;"/></root>)");
    root.AppendChild(loose);
    EXPECT_EQ(root.Text(), R"(<root><child a="&lt;&amp;&quot;"/><loose/></root>)");
}

TEST(Xml, WhatADocumentRefusesIsAFailure) {
    const XmlNode document = XmlNode::NewDocument();
    bool append = true;
    const XmlNode root = CreateElement(&document, "root", append);
    for (const char* name : {"", "two words", "1st", "a/>b<c", "<"}) {
        EXPECT_THROW(CreateElement(&root, name, append), RuntimeFailure) << name;
        EXPECT_THROW(root.SetAttribute(name, "x"), RuntimeFailure) << name;
    }
    EXPECT_THROW(CreateElement(&document, "second", append), RuntimeFailure);
    EXPECT_THROW(document.SetAttribute("a", "x"), RuntimeFailure);
    EXPECT_THROW(root.AppendChild(LoadXML("<other/>")), RuntimeFailure);
    EXPECT_THROW(root.AppendChild(root), RuntimeFailure);
    EXPECT_EQ(root.Text(), "<root/>");
}

TEST(Xml, AttributesFallBackToADefault) {
    const XmlNode element = LoadXML(R"(<schedule dashes="---" empty="" blank=" " text="a&#10;b"/>)");
    EXPECT_EQ(GetAttribute(element, "dashes", "1"), "1");
    EXPECT_EQ(GetAttribute(element, "missing", "1"), "1");
    EXPECT_EQ(GetAttribute(element, "empty", "1"), "");
    EXPECT_EQ(GetAttribute(element, "blank", "1"), " ");
    EXPECT_EQ(GetAttribute(element, "text", "1"), "a\nb");
    EXPECT_EQ(GetAttribute(element, "TEXT", "1"), "1");
    EXPECT_EQ(GetAttribute(element, "not a name", "1"), "1");
    EXPECT_EQ(GetAttribute(XmlNode::NewDocument(), "a", "1"), "1");
}

TEST(Xml, TextThatIsNotWellFormedIsAnErrorElement) {
    const std::string deep = std::string(100'000, '<');
    for (const std::string& text :
         {std::string(), std::string("hello"), std::string("<a>"), std::string("<a></b>"),
          std::string("<a b=c/>"), std::string("<a b='1' b='2'/>"), std::string("<a b='<'/>"),
          std::string("<a b='&'/>"), std::string("<a b='&unknown;'/>"), std::string("<a b='&#x;'/>"),
          std::string("<a/><b/>"), std::string("<a/>behind"), std::string("before<a/>"),
          std::string("<a>x & y</a>"), std::string("<!-- -->"), std::string("<a><b c='1' c='2'/></a>"),
          deep}) {
        const XmlNode element = LoadXML(text);
        EXPECT_EQ(element.Name(), "error") << text.substr(0, 40);
        EXPECT_NE(GetAttribute(element, "msg", ""), "") << text.substr(0, 40);
        EXPECT_NE(GetAttribute(element, "id", "0"), "0") << text.substr(0, 40);
        EXPECT_NE(GetAttribute(element, "msg", ""), "No error") << text.substr(0, 40);
    }
}

TEST(Xml, TheRootOfAWellFormedTextIsReturned) {
    for (const char* text :
         {"<schedule/>", "<?xml version='1.0' encoding='UTF-8'?>\r\n<schedule></schedule>\r\n",
          "\xEF\xBB\xBF<schedule/>",
          "<!-- c --><schedule a='&lt;&#x41;&#65;&amp;'>text &amp; more<![CDATA[ & < ]]></schedule><!-- d "
          "-->",
          "<!DOCTYPE schedule><schedule/>"}) {
        EXPECT_EQ(LoadXML(text).Name(), "schedule") << text;
    }
    const std::string longValue(100'000, '\'');
    EXPECT_EQ(GetAttribute(LoadXML("<schedule a=\"" + longValue + "\"/>"), "a", ""), longValue);
    std::string nested;
    for (int i = 0; i < 50'000; ++i) nested += "<a>";
    for (int i = 0; i < 50'000; ++i) nested += "</a>";
    EXPECT_EQ(LoadXML(nested).Name(), "a");
}

}  // namespace
}  // namespace norvelis
