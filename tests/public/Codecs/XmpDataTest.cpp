#include "Throws.h"

#include <Corvane/Rasterloom/Codecs/XmpArrayNode.h>
#include <Corvane/Rasterloom/Codecs/XmpData.h>
#include <Corvane/Rasterloom/Codecs/XmpLocalizedTextItemNode.h>
#include <Corvane/Rasterloom/Codecs/XmpLocalizedTextNode.h>
#include <Corvane/Rasterloom/Codecs/XmpStructNode.h>
#include <Corvane/Rasterloom/Codecs/XmpTagNames.h>
#include <Corvane/Rasterloom/Codecs/XmpValueNode.h>
#include <Corvane/Rasterloom/EnumNames.h>
#include <Corvane/Rasterloom/Exceptions.h>

#include <thread>

namespace Corvane::Rasterloom::Codecs {
namespace {

using Type = XmpNodeType;
using Names = std::vector<std::string>;

const XmpNamespace* TestNamespace() {
    return XmpNamespace::AddNamespace("urn:xmp-data-test", "xdt");
}

template <class Node>
std::shared_ptr<Node> As(const std::shared_ptr<XmpNode>& node) {
    EXPECT_NE(dynamic_cast<Node*>(node.get()), nullptr);
    return std::dynamic_pointer_cast<Node>(node);
}

std::shared_ptr<XmpValueNode> Value(std::string value, std::string_view name) {
    return std::make_shared<XmpValueNode>(Type::SimpleProperty, std::move(value), name);
}

std::shared_ptr<XmpValueNode> Item(std::string value) {
    return std::make_shared<XmpValueNode>(Type::SimpleProperty, std::move(value));
}

std::shared_ptr<XmpLocalizedTextItemNode> Text(std::string language, std::string value) {
    return std::make_shared<XmpLocalizedTextItemNode>(std::move(language), std::move(value));
}

constexpr const char* Packet = R"(<?xpacket begin="" id="W5M0MpCehiHzreSzNTczkc9d"?>
<x:xmpmeta xmlns:x="adobe:ns:meta/"><rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
<rdf:Description rdf:about="" xmlns:dc="http://purl.org/dc/elements/1.1/" xmlns:xmpMM="http://ns.adobe.com/xap/1.0/mm/"
 xmlns:stRef="http://ns.adobe.com/xap/1.0/sType/ResourceRef#" xmlns:first="urn:first-met-in-a-packet" dc:format="image/jpeg">
<dc:title><rdf:Alt><rdf:li xml:lang="de">Der See</rdf:li><rdf:li xml:lang="x-default">The lake</rdf:li>
<rdf:li xml:lang="en-us">The lake</rdf:li><rdf:li xml:lang="de">zweimal</rdf:li></rdf:Alt></dc:title>
<dc:subject><rdf:Bag><rdf:li>lake</rdf:li><rdf:li>alps</rdf:li></rdf:Bag></dc:subject>
<xmpMM:DerivedFrom stRef:documentID="1" stRef:instanceID="2"/>
<first:qualified rdf:parseType="Resource"><rdf:value>v</rdf:value><first:by>me</first:by></first:qualified>
</rdf:Description></rdf:RDF></x:xmpmeta><?xpacket end="w"?>)";

TEST(XmpData, LoadsATree) {
    XmpData data(Packet);
    EXPECT_EQ(data.get_Keys(), (Names{"dc:format", "dc:title", "dc:subject", "xmpMM:DerivedFrom", "first:qualified"}));
    EXPECT_EQ(As<XmpValueNode>(data.get_Item(XmpTagNames::DCFormat))->get_Value(), "image/jpeg");
    const auto title = As<XmpLocalizedTextNode>(data.get_Item(XmpTagNames::DCTitle));
    EXPECT_EQ(title->get_Keys(), (Names{"x-default", "de", "en-US"}));
    EXPECT_EQ(As<XmpLocalizedTextItemNode>(title->get_Item("de"))->get_Value(), "Der See") << "the first one";
    EXPECT_EQ(title->get_Item("de")->get_Namespace(), nullptr);
    EXPECT_EQ(title->get_Item("de")->get_Count(), 0);
    const auto subject = As<XmpArrayNode>(data.get_Item("dc:subject"));
    EXPECT_EQ(subject->get_NodeType(), Type::UnorderedArray);
    EXPECT_EQ(As<XmpValueNode>(subject->get_Item(1))->get_Value(), "alps");
    EXPECT_EQ(subject->get_Item(1)->get_Name(), "");
    const auto derived = As<XmpStructNode>(data.get_Item("xmpMM:DerivedFrom"));
    EXPECT_EQ(derived->get_Keys(), (Names{"stRef:documentID", "stRef:instanceID"}));
    const auto qualified = As<XmpValueNode>(data.get_Item("first:qualified"));
    EXPECT_EQ(qualified->get_Item("first:by")->get_NodeType(), Type::Qualifier);
    const XmpNamespace* const first = XmpNamespace::GetNamespaceByUri("urn:first-met-in-a-packet");
    EXPECT_EQ(qualified->get_Namespace(), first) << "known from now on";
    EXPECT_EQ(XmpNamespace::GetNamespaceByPrefix("first"), first);
    EXPECT_EQ(data.FindKeysByNamespace(first), Names{"first:qualified"});
    EXPECT_EQ(data.get_Namespaces().size(), 3U);
    EXPECT_EQ(data.get_Item("dc:none"), nullptr);

    EXPECT_EQ(ThrownText<Exception>([&] { data.Load("<a>"); }),
              "The XMP packet is not valid: no element found (line 1, column 4).");
    EXPECT_EQ(data.get_Count(), 5) << "a failure changes nothing";
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([&] { data.Load(nullptr); }), "xmp");
    data.Load("");
    EXPECT_EQ(data.get_Count(), 0);
}

TEST(XmpData, SavesATree) {
    XmpData data(Packet);
    const std::string saved = data.Save();
    EXPECT_LT(saved.find("x-default"), saved.find("\"de\""));
    XmpData again(saved);
    EXPECT_EQ(again.Save(), saved);
    EXPECT_EQ(again.get_Keys(), data.get_Keys());
    EXPECT_EQ(XmpData(XmpData().Save()).get_Count(), 0);

    XmpData built;
    built.AddNode(Value("3", XmpTagNames::XmpRating));
    auto people = std::make_shared<XmpArrayNode>(Type::OrderedArray, XmpTagNames::DCCreator);
    people->Add(Item("Ann"));
    people->Add(std::make_shared<XmpStructNode>());
    As<XmpStructNode>(people->get_Item(1))
        ->AddNode(std::make_shared<XmpValueNode>(Type::SimpleProperty, "Bob", TestNamespace(), "name"));
    built.AddNode(people);
    auto title = std::make_shared<XmpLocalizedTextNode>(XmpTagNames::DCTitle);
    title->AddNode(Text("fr", "Le lac"));
    title->AddNode(Text("x-default", "The lake"));
    built.AddNode(title);
    auto label = Value("a <b>\x02", XmpTagNames::XmpLabel);
    label->AddNode(std::make_shared<XmpValueNode>(Type::Qualifier, "q", "xdt:why"));
    built.AddNode(label);
    const std::string packet = built.Save();
    EXPECT_LT(packet.find("x-default"), packet.find("\"fr\"")) << "first, wherever it stands in the tree";
    XmpData copy(packet);
    EXPECT_EQ(As<XmpValueNode>(copy.get_Item("xmp:Label"))->get_Value(), "a <b> ");
    EXPECT_EQ(As<XmpValueNode>(As<XmpValueNode>(copy.get_Item("xmp:Label"))->get_Item("xdt:why"))->get_Value(), "q");
    const auto bob = As<XmpStructNode>(As<XmpArrayNode>(copy.get_Item("dc:creator"))->get_Item(1));
    EXPECT_EQ(As<XmpValueNode>(bob->get_Item("xdt:name"))->get_Value(), "Bob");
    EXPECT_EQ(copy.Save(), packet);

    label->set_Value("\xFF");
    EXPECT_TRUE(ThrownText<UnexpectedException>([&] {
                    built.Save();
                }).ends_with("Experienced problems while converting text to UTF8"));
    built.SetNode(Value("", "rdf:li"));
    built.Remove("xmp:Label");
    EXPECT_TRUE(ThrownText<UnexpectedException>([&] { built.Save(); }).ends_with("Node name is not valid"));
    built.Remove("rdf:li");
    people->Dispose();
    EXPECT_THROW(built.Save(), Host::ObjectDisposedException);
}

TEST(XmpData, ChecksWhatIsPutIn) {
    const auto fails = [](const char* parameter, const char* text, auto body) {
        EXPECT_EQ(ThrownText<Host::ArgumentException>(body), text);
        EXPECT_EQ(ThrownParameter<Host::ArgumentException>(body), parameter);
    };
    XmpData data;
    const auto qualifier = std::make_shared<XmpValueNode>(Type::Qualifier, "q", "xmp:Label");
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([&] { data.Add("a", nullptr); }), "value");
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([&] { data.AddNode(nullptr); }), "node");
    fails("name, node", "Value of 'node.Name' differs from 'name'.", [&] { data.Add("a", Value("", "dc:format")); });
    fails("node", "All top-level nodes should belong to some namespace.", [&] { data.AddNode(Item("")); });
    fails("node", "All top-level nodes should belong to some namespace.", [&] { data.AddNode(Text("en", "")); });
    fails("node", "Node is not allowed to be a qualifier.", [&] { data.AddNode(qualifier); });
    data.AddNode(Value("1", "dc:format"));
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { data.AddNode(Value("2", "dc:format")); }),
              "An element with the same key already exists in the dictionary.");
    data.set_Item("dc:format", Value("3", "dc:format"));
    EXPECT_EQ(data.get_Count(), 1);

    XmpArrayNode array(Type::AlternativeArray, "dc:title");
    fails("value", "Node is not allowed to be a qualifier.", [&] { array.Add(qualifier); });
    fails("value", "Array items shouldn't have any name or namespace.", [&] { array.Add(Value("", "dc:format")); });
    fails("value", "Array items shouldn't have any name or namespace.", [&] { array.Add(Text("en", "")); });
    XmpValueNode value(Type::SimpleProperty, "v", "dc:source");
    fails("node", "The type of this node should be XmpNodeType.Qualifier.",
          [&] { value.AddNode(Value("", "dc:format")); });
    fails("name", "Invalid qualified name.",
          [&] { value.Add("", std::make_shared<XmpValueNode>(Type::Qualifier, "nameless")); });
    XmpStructNode structure;
    fails("node", "Node is not allowed to be a qualifier.", [&] { structure.AddNode(qualifier); });
    fails("name", "Invalid qualified name.", [&] { structure.Add("", Item("nameless")); });
    XmpLocalizedTextNode texts;
    fails("node", "The type of this node should be XmpNodeType.LocalizedTextItem.", [&] { texts.Add("", Item("")); });
    fails("name, node", "Value of 'node.Name' differs from 'name'.", [&] { texts.Add("de", Text("en", "")); });
    fails("nodeType", "The allowed values are SimpleProperty and Qualifier.",
          [] { XmpValueNode(Type::Structure, ""); });
    fails("nodeType", "Must be either OrderedArray, UnorderedArray or AlternativeArray.",
          [] { XmpArrayNode{Type::SimpleProperty}; });
    fails("nodeType", "Enumeration value has an inappropriate value.", [] { XmpArrayNode{static_cast<Type>(9)}; });
}

TEST(XmpNode, QualifiedNames) {
    for (const char* const name : {"", "title", ":title", "dc:", "none:title", "dc:a b", "dc:a:b"}) {
        EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { XmpStructNode node(name); }), "Invalid qualified name.");
    }
    EXPECT_EQ(XmpNode::GetNamespaceByQualifiedName("dc:title")->get_Uri(), "http://purl.org/dc/elements/1.1/");
    EXPECT_EQ(ThrownText<Host::ArgumentException>([] { XmpNode::GetNamespaceByQualifiedName("title"); }),
              "'name' is not a valid qualified name.");
    EXPECT_EQ(ThrownText<Host::ArgumentException>([] { XmpNode::GetNamespaceByQualifiedName("none:a"); }),
              "Couldn't find a namespace whose prefix would match that in name.");
    const XmpNamespace* const dc = XmpNamespace::GetNamespaceByPrefix("dc");
    EXPECT_EQ(XmpNode::GetQualifiedName(dc, "title"), "dc:title");
    EXPECT_EQ(XmpNode::GetQualifiedName(dc, "dc:title"), "dc:title");
    EXPECT_EQ(ThrownText<UnexpectedException>([&] { XmpNode::GetQualifiedName(dc, ":title"); }),
              "'name' is not a valid qualified name. Prefix or tag name is empty");
    EXPECT_EQ(ThrownText<UnexpectedException>([&] { XmpNode::GetQualifiedName(dc, "xmp:title"); }),
              "Prefix in 'name' does not match that of ns.");
    EXPECT_EQ(XmpNamespace::AddNamespace(dc->get_Uri(), "dc"), dc);
    EXPECT_THROW(XmpNamespace::AddNamespace(dc->get_Uri(), "other"), Host::ArgumentException);
    EXPECT_THROW(XmpNamespace::AddNamespace("urn:other", "dc"), Host::ArgumentException);
    EXPECT_EQ(XmpNamespace::GetNamespaceByUri("urn:other"), nullptr);
    EXPECT_EQ(XmpNamespace::GetNamespaceByIndex(0)->get_Prefix(), "xml");
    EXPECT_THROW(XmpNamespace::GetNamespaceByIndex(XmpNamespace::get_NamespaceCount()),
                 Host::ArgumentOutOfRangeException);
    EXPECT_EQ(ToString(Type::LocalizedTextItem), "LocalizedTextItem");
}

TEST(XmpNode, CyclesAreRefused) {
    const auto outer = std::make_shared<XmpStructNode>("xmpMM:DerivedFrom");
    const auto middle = std::make_shared<XmpArrayNode>(Type::OrderedArray, "dc:creator");
    const auto inner = std::make_shared<XmpArrayNode>(Type::UnorderedArray);
    const auto item = Item("shared");
    outer->AddNode(middle);
    middle->Add(inner);
    middle->Add(item);
    inner->Add(item);
    EXPECT_EQ(middle->IndexOf(item.get()), 1) << "the same node twice is no cycle";
    const std::string text = "Adding the node would create a cycle in the node graph.";
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { outer->AddNode(outer); }), text);
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { inner->Add(inner); }), text);
    const auto wrapped = std::make_shared<XmpStructNode>();
    wrapped->AddNode(outer);
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { inner->Add(wrapped); }), text);
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { inner->set_Item(0, wrapped); }), text);
    EXPECT_EQ(ThrownParameter<Host::ArgumentException>([&] { inner->Insert(0, wrapped); }), "value");
    EXPECT_EQ(inner->get_Count(), 1);
}

/// Deeper than any stack; neither building nor checking nor releasing it may recurse. Saving refuses it.
TEST(XmpNode, DepthIsNoDanger) {
    auto node = std::make_shared<XmpArrayNode>(Type::OrderedArray);
    std::weak_ptr<XmpNode> deepest = node;
    for (int depth = 0; depth < 100000; ++depth) {
        auto outer = std::make_shared<XmpArrayNode>(Type::OrderedArray);
        outer->_AddNoCycle(std::move(node));
        node = std::move(outer);
    }
    XmpData data;
    auto top = std::make_shared<XmpArrayNode>(Type::OrderedArray, "dc:creator");
    top->Add(std::move(node));
    data.AddNode(std::move(top));
    EXPECT_TRUE(ThrownText<UnexpectedException>([&] { data.Save(); }).ends_with("nested too deeply."));
    data.Clear();
    EXPECT_TRUE(deepest.expired());
}

TEST(XmpArrayNode, IsAList) {
    XmpArrayNode array(Type::OrderedArray);
    const auto a = Item("a");
    const auto b = Item("b");
    EXPECT_EQ(array.Add(b), 0);
    array.Insert(0, a);
    array.Insert(2, Item("c"));
    EXPECT_EQ(array.IndexOf(b.get()), 1);
    EXPECT_FALSE(array.Contains(Item("b").get())) << "equal is identical";
    std::vector<std::shared_ptr<XmpNode>> copy(4);
    array.CopyTo(copy, 1);
    EXPECT_EQ(copy[1], a);
    EXPECT_EQ(ThrownParameter<Host::ArgumentException>([&] { array.CopyTo(copy, 2); }), "array");
    EXPECT_EQ(ThrownParameter<Host::ArgumentOutOfRangeException>([&] { array.get_Item(3); }), "index");
    EXPECT_EQ(ThrownParameter<Host::ArgumentOutOfRangeException>([&] { array.Insert(4, a); }), "index");
    EXPECT_EQ(ThrownParameter<Host::ArgumentOutOfRangeException>([&] { array.RemoveAt(-1); }), "index");
    array.Remove(a.get());
    array.RemoveAt(1);
    auto nodes = array.GetEnumerator();
    EXPECT_THROW(nodes.get_Current(), Host::InvalidOperationException);
    ASSERT_TRUE(nodes.MoveNext());
    EXPECT_EQ(nodes.get_Current(), b);
    EXPECT_FALSE(nodes.MoveNext() || nodes.MoveNext());
    EXPECT_THROW(nodes.get_Current(), Host::InvalidOperationException);
    array.Dispose();
    EXPECT_THROW(array.get_Count(), Host::ObjectDisposedException);
}

TEST(XmpNamespaceThreading, PacketsOfSeveralThreadsBringNamespaces) {
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([number] {
            for (int i = 0; i < 50; ++i) {
                const std::string prefix = "thr" + std::to_string((i + number) % 60);
                XmpData data(
                    "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'><rdf:Description xmlns:" +
                    prefix + "='urn:" + prefix + "' " + prefix + ":a='1'/></rdf:RDF>");
                EXPECT_EQ(data.get_Keys(), Names{prefix + ":a"});
                EXPECT_EQ(data.get_Namespaces().front(), XmpNamespace::GetNamespaceByUri("urn:" + prefix));
                XmpData(data.Save()).get_Count();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

} // namespace
} // namespace Corvane::Rasterloom::Codecs
