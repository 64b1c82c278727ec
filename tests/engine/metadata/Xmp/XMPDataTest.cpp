#include "metadata/Xmp/XMPData.h"

#include "ErrorHandling/Exceptions.h"
#include "JpegSegments.h"
#include "Throws.h"
#include "metadata/Xmp/XMPNamespace.h"
#include "metadata/Xmp/XmpPacketScanner.h"
#include "metadata/Xmp/XmpText.h"

#include <fmt/format.h>
#include <functional>

namespace ImagingFramework {
namespace {

/// The content of one rdf:Description with prefixes for the tests.
std::string Packet(std::string_view properties, std::string_view attributes = "") {
    return fmt::format("<x:xmpmeta xmlns:x='adobe:ns:meta/'>"
                       "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
                       "<rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/' "
                       "xmlns:t='urn:xmp-test' {}>{}</rdf:Description></rdf:RDF></x:xmpmeta>",
                       attributes, properties);
}

std::string Dump(const XMPNode& node);

/// Between the brackets at the end of `brackets`.
std::string Dump(const XmpNodeList& nodes, std::string_view brackets) {
    std::string text;
    for (const auto& node : nodes) {
        text += (text.empty() ? "" : " ") + Dump(*node);
    }
    return std::string(brackets).insert(brackets.empty() ? 0 : brackets.size() - 1, text);
}

/// As name='value'[qualifiers], name={fields}, name=bag(items), name=lang(items).
std::string Dump(const XMPNode& node) {
    const XMPNamespace* const ns = node.GetNamespaceOrNull();
    const std::string name = ns != nullptr ? XMPData::GetQualifiedName(*ns, node.GetName()) + "=" : "";
    using enum XMPNodeType;
    const std::pair<XMPNodeType, const char*> kinds[] = {{Structure, "{}"},
                                                         {UnorderedArray, "bag()"},
                                                         {OrderedArray, "seq()"},
                                                         {AlternativeArray, "alt()"},
                                                         {LocalizedText, "lang()"}};
    const auto kind = std::ranges::find(kinds, node.GetNodeType(), [](const auto& pair) { return pair.first; });
    if (kind == std::end(kinds)) {
        return name + "'" + node.GetValue() + "'" +
               (node.GetQualifierCount() == 0 ? "" : Dump(node.GetQualifiersRef(), "[]"));
    }
    return name + Dump(node.GetChildrenRef(), kind->second);
}

std::string Dump(const XMPData& data) {
    return Dump(data.GetNodesRef(), "");
}

TEST(XMPData, ReadsEveryFormOfAProperty) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"<t:a>text &amp; &lt;more&gt;</t:a>", "t:a='text & <more>'"},
        {"<t:a/>", "t:a=''"},
        {"<t:a>  </t:a>", "t:a='  '"},
        {"<t:a xml:lang='EN-us' rdf:ID='i' rdf:datatype='d'>v</t:a>", "t:a='v'[xml:lang='en-US']"},
        {"<t:a rdf:resource='urn:r'/>", "t:a='urn:r'"},
        {"<t:a rdf:resource='urn:r' t:q='1' xml:lang='de'/>", "t:a='urn:r'[xml:lang='de' t:q='1']"},
        {"<t:a rdf:value='v' t:q='1'/>", "t:a='v'[t:q='1']"},
        {"<t:a t:f='1' t:g=''/>", "t:a={t:f='1' t:g=''}"},
        {"<t:a rdf:parseType='Resource'><t:f>1</t:f><t:g/></t:a>", "t:a={t:f='1' t:g=''}"},
        {"<t:a rdf:parseType='Resource'/>", "t:a={}"},
        {"<t:a> <rdf:Description t:f='1'><t:g>2</t:g></rdf:Description> </t:a>", "t:a={t:f='1' t:g='2'}"},
        {"<t:a><rdf:Description><rdf:value>v</rdf:value><t:q>1</t:q></rdf:Description></t:a>", "t:a='v'[t:q='1']"},
        {"<t:a rdf:parseType='Resource'><t:q rdf:parseType='Resource'><rdf:value>1</rdf:value><t:r>2</t:r></t:q>"
         "<rdf:value xml:lang='fr'>v</rdf:value></t:a>",
         "t:a='v'[xml:lang='fr' t:q='1'[t:r='2']]"},
        {"<t:a><t:Type t:f='1'/></t:a>", "t:a={t:f='1'}"},
        {"<t:a><t:Type><rdf:value>v</rdf:value></t:Type></t:a>", "t:a='v'[rdf:type='urn:xmp-testType']"},
        {"<t:a rdf:parseType='Resource'><rdf:value><rdf:Bag><rdf:li>1</rdf:li></rdf:Bag></rdf:value><t:q>2</t:q></t:a>",
         "t:a=bag('1')"},
        {"<t:a><rdf:Bag><rdf:li>1</rdf:li><rdf:_2>2</rdf:_2></rdf:Bag></t:a>", "t:a=bag('1' '2')"},
        {"<t:a><rdf:Seq><rdf:li t:f='1'/><rdf:li><rdf:Bag/></rdf:li></rdf:Seq></t:a>", "t:a=seq({t:f='1'} bag())"},
        {"<t:a><rdf:Alt><rdf:li>1</rdf:li><rdf:li xml:lang='de'>2</rdf:li></rdf:Alt></t:a>",
         "t:a=alt('1' '2'[xml:lang='de'])"},
        {"<t:a><rdf:Alt><rdf:li xml:lang='de'>1</rdf:li><rdf:li xml:lang='X-Default'>2</rdf:li></rdf:Alt></t:a>",
         "t:a=lang('2'[xml:lang='x-default'] '1'[xml:lang='de'])"},
        {"<o:a xmlns:o='http://purl.org/dc/1.1/'>old</o:a>", "dc:a='old'"},
    };
    for (const auto& [xml, expected] : cases) {
        const XMPData data(Packet(xml));
        EXPECT_EQ(Dump(data), expected) << xml;
        const std::string saved = data.SaveToBuffer();
        EXPECT_EQ(Dump(XMPData(saved)), expected) << saved;
    }
    EXPECT_EQ(Dump(XMPData(Packet("", "t:a='1' dc:format='f'"))), "t:a='1' dc:format='f'");
}

TEST(XMPData, FindsTheRdf) {
    const std::string rdf = "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#' xmlns:t='urn:xmp-test'>"
                            "<rdf:Description about='uuid:1' t:a='1'/><rdf:Description t:b='2'/></rdf:RDF>";
    const std::string expected = "t:a='1' t:b='2' xmpMM:InstanceID='uuid:1'";
    EXPECT_EQ(Dump(XMPData(rdf)), expected);
    EXPECT_EQ(Dump(XMPData("\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-16'?><any>text<more>" + rdf + rdf +
                           "</more></any>")),
              expected)
        << "the first one, in whatever";
    EXPECT_EQ(Dump(XMPData("<?xpacket begin='' id='x'?>" + rdf + "<?xpacket end='w'?>\n" + std::string(3, '\0'))),
              expected);
    for (const char* const none : {"", "  ", "<x/>", "<x:xmpmeta xmlns:x='adobe:ns:meta/'/>"}) {
        EXPECT_EQ(XMPData(none).GetNodeCount(), 0U);
    }
}

TEST(XMPData, RefusesWhatIsNoXmp) {
    const std::pair<std::string, const char*> cases[] = {
        {"text", "(line 1, column 1)"},
        {"<a><b></a>", "mismatched tag"},
        {"<!DOCTYPE x [<!ENTITY e 'eeee'>]><x>&e;</x>", "document type"},
        {Packet("<t:a rdf:parseType='Literal'>v</t:a>"), "parse type"},
        {Packet("<t:a rdf:resource='r' rdf:value='v'/>"), "more than one value"},
        {Packet("<t:a><rdf:Bag/><rdf:Bag/></t:a>"), "more than one value"},
        {Packet("<t:a>text<rdf:Bag/></t:a>"), "more than one value"},
        {Packet("<t:a><rdf:Bag/>text</t:a>"), "a text is out of place"},
        {Packet("<t:a rdf:resource='r'>text</t:a>"), "a text is out of place"},
        {Packet("text"), "a text is out of place"},
        {Packet("<t:a><rdf:Bag><t:b/></rdf:Bag></t:a>"), "other elements than items"},
        {Packet("<rdf:li>1</rdf:li>"), "element of RDF is out of place"},
        {Packet("<t:a><rdf:li>1</rdf:li></t:a>"), "element of RDF is out of place"},
        {Packet("<rdf:value>1</rdf:value>"), "rdf:value is out of place"},
        {Packet("<t:a rdf:about='x'>1</t:a>"), "attribute of RDF is out of place"},
        {Packet("", "rdf:resource='x'"), "attribute of RDF is out of place"},
        {Packet("<t:a b='1'/>"), "an attribute needs a namespace"},
        {Packet("<a/>"), "an element needs a namespace"},
        {Packet("<t:a/></rdf:Description><rdf:Description rdf:about='1'/><rdf:Description rdf:about='2'>"),
         "more than one resource"},
        {Packet("<t:a/></rdf:Description><rdf:Bag/><rdf:Description>"), "only rdf:Description"},
    };
    const std::pair<std::string, const char*> broken[] = {
        {Packet("<t:a/><t:a/>"), "trying to add a duplicate"},
        {Packet("<t:s><rdf:Description t:a='1'><t:a/></rdf:Description></t:s>"), "field already exists"},
        {Packet("<t:a xml:lang='a' rdf:parseType='Resource'><rdf:value xml:lang='b'/></t:a>"),
         "Qualifier Already exists"},
        {Packet("<t:a>\xE4</t:a>"), "Experienced problems while converting text to UTF8"},
    };
    for (const auto& [packet, reason] : cases) {
        SCOPED_TRACE(packet);
        ExpectThrown<Exception>(reason, [&] { XMPData data(packet); });
    }
    for (const auto& [packet, reason] : broken) {
        SCOPED_TRACE(packet);
        ExpectThrown<UnexpectedException>(reason, [&] { XMPData data(packet); });
    }
}

TEST(XMPData, BoundsDepthAndNumber) {
    const auto nested = [](std::size_t depth) {
        std::string open;
        std::string close;
        for (std::size_t i = 0; i < depth; ++i) {
            open += "<t:a rdf:parseType='Resource'>";
            close += "</t:a>";
        }
        return Packet(open + close);
    };
    const XMPData deep(nested(253)); // three elements are around them
    EXPECT_EQ(XMPData(deep.SaveToBuffer()).GetNodeCount(), 1U);
    ExpectThrown<Exception>("nested too deeply", [&] { XMPData data(nested(254)); });
    std::string many = "<t:a><rdf:Bag>";
    for (int i = 0; i < 1000000; ++i) {
        many += "<rdf:li/>";
    }
    ExpectThrown<Exception>("too many", [&] { XMPData data(Packet(many + "</rdf:Bag></t:a>")); });
}

TEST(XMPData, WritesAPacket) {
    XMPData data;
    const XMPNamespace& dc = data.AddNamespace("http://purl.org/dc/elements/1.1/", "dc");
    const XMPNamespace& own = data.AddNamespace("urn:a&'\"<b>", "written");
    XMPNode& format = data.AddNode(XMPNodeType::SimpleProperty, dc, "format", "a<b>&\r\n\"\x01'");
    format.CreateQualifier(XMPNamespace::Xml(), "lang", "EN-us");
    format.CreateQualifier(own, "q", "");
    data.AddNode(XMPNodeType::LocalizedText, dc, "title", "").CreateLocalizedText("de-de", "T");
    const std::string packet = data.SaveToBuffer();
    const std::string_view expected = R"(<x:xmpmeta xmlns:x="adobe:ns:meta/" x:xmptk="Rasterloom">
 <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
  <rdf:Description rdf:about=""
    xmlns:dc="http://purl.org/dc/elements/1.1/"
    xmlns:written="urn:a&amp;'&quot;&lt;b&gt;">
   <dc:format xml:lang="en-US" rdf:parseType="Resource">
    <rdf:value>a&lt;b&gt;&amp;&#xD;
" '</rdf:value>
    <written:q/>
   </dc:format>
   <dc:title>
    <rdf:Alt>
     <rdf:li xml:lang="de-DE">T</rdf:li>
    </rdf:Alt>
   </dc:title>
  </rdf:Description>
 </rdf:RDF>
</x:xmpmeta>
)";
    EXPECT_TRUE(packet.starts_with("<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"));
    EXPECT_TRUE(packet.ends_with("\n<?xpacket end=\"w\"?>"));
    EXPECT_NE(packet.find(expected), packet.npos) << packet;
    EXPECT_EQ(XMPData(packet).SaveToBuffer(), packet);
    EXPECT_EQ(XMPData(XMPData().SaveToBuffer()).GetNodeCount(), 0U);
}

TEST(XMPData, NamesAndNodes) {
    XMPData data;
    const XMPNamespace& dc = data.AddNamespace("http://purl.org/dc/elements/1.1/", "dc");
    XMPNode& first = data.AddNode(XMPNodeType::SimpleProperty, dc, "format", "f");
    EXPECT_EQ(&data.GetNodeRef(0), &first);
    EXPECT_EQ(data.GetNodeRef(dc, "format"), &first);
    EXPECT_EQ(&data.GetNamespaceByQualifiedNodeName("dc:any"), &dc);
    EXPECT_EQ(data.GetNamespaceByUri("urn:none"), nullptr);
    EXPECT_GT(XMPData::GetRegisteredNamespaces().size(), 40U);
    const auto fails = [](auto body) {
        const std::string text = ThrownText<UnexpectedException>(body);
        return text.substr(text.find("info: ") + 6);
    };
    const XMPNodeType simple = XMPNodeType::SimpleProperty;
    EXPECT_EQ(fails([&] { data.AddNode(simple, dc, "format", ""); }), "trying to add a duplicate");
    EXPECT_EQ(fails([&] { data.AddNode(XMPNodeType::Qualifier, dc, "q", ""); }), "not acceptable for a top-level node");
    EXPECT_EQ(fails([&] { data.AddNode(XMPNodeType::LocalizedTextItem, dc, "q", ""); }),
              "not acceptable for a top-level node");
    EXPECT_EQ(fails([&] { data.GetNamespaceByQualifiedNodeName("dc"); }), "Qualified name should contain a colon.");
    EXPECT_EQ(fails([&] { data.GetNamespaceByQualifiedNodeName("tiff:a"); }), "invalid prefix");
    EXPECT_EQ(fails([&] { data.AddNamespace("http://purl.org/dc/elements/1.1/", "other"); }),
              "actual prefix is different");
    EXPECT_EQ(fails([&] { data.AddNamespace("urn:names-and-nodes", "dc"); }), "actual prefix is different");
    EXPECT_EQ(XMPNamespace::FindByUri("urn:names-and-nodes"), nullptr) << "the failure leaves nothing behind";
    EXPECT_TRUE(data.AddNamespace("urn:defpref-test", "").GetPrefix().starts_with("defpref"));
    for (const char* const name : {"", "a b", "1a", "a:b", "\xC3\x97", "a\xFF"}) {
        EXPECT_EQ(fails([&] { data.AddNode(simple, dc, name, ""); }), "Node name is not valid") << name;
    }
    EXPECT_EQ(fails([&] { data.AddNode(simple, XMPNamespace::Rdf(), "li", ""); }), "Node name is not valid");
    EXPECT_EQ(fails([&] { data.AddNode(simple, XMPNamespace::Xml(), "lang", ""); }), "Node name is not valid");
    data.AddNode(simple, dc, "größe", "");
    EXPECT_EQ(Dump(XMPData(data.SaveToBuffer())), "dc:format='f' dc:größe=''");
    ThrownText<ArgumentOutOfRangeException>([&] { data.GetNodeRef(2); });
    ThrownText<ArgumentOutOfRangeException>([&] { data.GetNamespaceByIndex(99); });
}

TEST(XMPNode, RefusesWhatItsKindDoesNotHave) {
    const XMPNamespace& dc = *XMPNamespace::FindByPrefix("dc");
    XMPNode simple(XMPNodeType::SimpleProperty, &dc, "a", "v");
    XMPNode array(XMPNodeType::OrderedArray, &dc, "a", "");
    XMPNode structure(XMPNodeType::Structure, &dc, "a", "");
    XMPNode texts(XMPNodeType::LocalizedText, &dc, "a", "");
    simple.CreateQualifier(dc, "q", "");
    structure.CreateStructField(dc, "f", XMPNodeType::SimpleProperty, "");
    XMPNode& item = array.CreateArrayItem(XMPNodeType::SimpleProperty, "1");
    XMPNode& english = texts.CreateLocalizedText("EN", "1");
    const auto node = [&](XMPNodeType type, bool isItem) {
        return std::make_shared<XMPNode>(type, isItem ? nullptr : &dc, isItem ? "" : "f", "");
    };
    using Type = XMPNodeType;
    const std::pair<std::function<void()>, const char*> cases[] = {
        {[&] { XMPNode(static_cast<Type>(8), &dc, "a", ""); }, "Invalid node type"},
        {[&] { XMPNode(Type::Structure, &dc, "a", "v"); }, "Node cannot have a value"},
        {[&] { item.GetNamespace(); }, "Array items don't have namespaces"},
        {[&] { array.GetValue(); }, "Only applicable to simple properties or qualifiers"},
        {[&] { array.GetQualifierCount(); }, "Only applicable to simple properties or qualifiers"},
        {[&] { simple.GetArrayItemCount(); }, "wrong node type"},
        {[&] { simple.CreateArrayItem(Type::SimpleProperty, ""); }, "wrong node type"},
        {[&] { simple.DeleteArrayItem(0); }, "wrong node type"},
        {[&] { texts.CreateArrayItem(Type::SimpleProperty, ""); }, "should use CreateLocalizedText()"},
        {[&] { simple.GetStructFieldCount(); }, "current node is not a structure"},
        {[&] { array.CreateStructField(dc, "f", Type::SimpleProperty, ""); }, "current node is not a structure"},
        {[&] { structure.CreateStructField(dc, "f", Type::SimpleProperty, ""); }, "Field Already Exists"},
        {[&] { array.CreateQualifier(dc, "q", ""); },
         "Qualifiers can be assigned only to simple properties or qualifiers"},
        {[&] { simple.CreateQualifier(dc, "q", ""); }, "Qualifier already exists"},
        {[&] { simple.AddArrayItemNoSync(node(Type::Structure, true)); },
         "method beeing called for a node of invalid type"},
        {[&] { simple.AddStructFieldNoSync(node(Type::Structure, false)); },
         "method beeing called for a node of invalid type"},
        {[&] { structure.AddStructFieldNoSync(node(Type::Structure, false)); }, "field already exists"},
        {[&] { array.AddQualifierNoSync(node(Type::Qualifier, false)); }, "Node cannot have qualifiers"},
        {[&] { simple.AddQualifierNoSync(node(Type::Structure, false)); }, "child should be a qualifier"},
        {[&] { array.AddArrayItemNoSync(node(Type::Structure, false)); }, "Invalid child node"},
        {[&] { structure.AddStructFieldNoSync(node(Type::Structure, true)); }, "Invalid child node"},
        {[&] { array.CreateLocalizedText("en", ""); }, "Node is not a localized text array"},
        {[&] { array.UpdateLocalizedText(english, ""); }, "Node is not a localized text array"},
        {[&] { texts.UpdateLocalizedText(item, ""); }, "NO language qualifier"},
        {[&] { XMPNode(Type::LocalizedText, &dc, "b", "").UpdateLocalizedText(english, ""); }, "Did not find the node"},
        {[&] { simple.CreateQualifier(dc, "r", "\xEF\xBF\xBF"); },
         "Experienced problems while converting text to UTF8"},
    };
    for (const auto& [body, text] : cases) {
        EXPECT_TRUE(ThrownText<UnexpectedException>(body).ends_with(text)) << text;
    }
    ThrownText<ArgumentOutOfRangeException>([&] { array.GetArrayItemRef(1); });
    EXPECT_EQ(&texts.CreateLocalizedText("en", "2"), &english);
    texts.CreateLocalizedText("x-default", "0");
    EXPECT_EQ(Dump(texts), "dc:a=lang('0'[xml:lang='x-default'] '2'[xml:lang='en'])");
    array.DeleteArrayItem(0);
    EXPECT_EQ(Dump(array), "dc:a=seq()");
    for (int i = 0; i < 40; ++i) {
        structure.CreateStructField(dc, fmt::format("n{}", i), XMPNodeType::SimpleProperty, "");
    }
    EXPECT_EQ(structure.GetStructFieldRef(dc, "n39"), &structure.GetStructFieldRef(40));
    EXPECT_EQ(structure.GetStructFieldRef(dc, "n40"), nullptr);
}

TEST(XMPNamespace, OnePrefixForEachUri) {
    const XMPNamespace& first = XMPNamespace::Register("urn:one-prefix:1", "onePrefix");
    const XMPNamespace& second = XMPNamespace::Register("urn:one-prefix:2", "onePrefix");
    EXPECT_EQ(&XMPNamespace::Register("urn:one-prefix:1", "another"), &first);
    EXPECT_EQ(first.GetPrefix(), "onePrefix");
    EXPECT_EQ(second.GetPrefix(), "onePrefix_1_");
    EXPECT_EQ(XMPNamespace::FindByPrefix("onePrefix_1_"), &second);
    EXPECT_EQ(XMPNamespace::GetRegistered(second.GetIndex()).front(), &second);
    const XMPData data(Packet("<onePrefix:a xmlns:onePrefix='urn:one-prefix:2'>1</onePrefix:a>"));
    EXPECT_EQ(Dump(data), "onePrefix_1_:a='1'");
    for (const auto& [uri, prefix] : {std::pair("", "a"),
                                      {"a\nb", "a"},
                                      {"a\xFF", "a"},
                                      {"http://www.w3.org/2000/xmlns/", "a"},
                                      {"urn:wrong", "a:"},
                                      {"urn:wrong", "xmlns"},
                                      {"urn:wrong", "1"}}) {
        ThrownText<ArgumentException>([&] { XMPNamespace::Register(uri, prefix); });
    }
}

TEST(XmpText, Languages) {
    for (const auto& [from, to] : {std::pair("en", "en"),
                                   {"EN-us", "en-US"},
                                   {"X-DEFAULT", "x-default"},
                                   {"zh-hant-TW", "zh-hant-tw"},
                                   {"de-AT-1996", "de-AT-1996"},
                                   {"", ""},
                                   {"a-", "a-"}}) {
        EXPECT_EQ(NormalizeLanguage(from), to);
    }
}

std::string Utf16(std::string_view ascii, bool bigEndian) {
    std::string text;
    for (const char c : ascii) {
        text += bigEndian ? std::string{'\0', c} : std::string{c, '\0'};
    }
    return text;
}

TEST(XmpPacketScanner, FindsPackets) {
    const auto find = [](const std::string& text) {
        return XmpPacketScanner::FindPacket({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()})
            .value_or("-");
    };
    const std::string id = "id='W5M0MpCehiHzreSzNTczkc9d'";
    const std::string packet =
        "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\" bytes='9'?><a/><?xpacket end='r'?>";
    const std::string header = "<?xpacket begin='' " + id + "?>";
    const std::string plain = header + "x<?xpacket end=\"w\"?>";
    const std::string twoEnds = header + "x<?xpacket end='x'?><?xpacket end='w'?>";
    EXPECT_EQ(find("junk" + packet + plain), packet);
    EXPECT_EQ(find("<?xpacket begin='x' " + id + "?>" + plain + "more"), plain) << "another header is none";
    EXPECT_EQ(find("<?xpacket begin='' id='other'?>" + plain), plain);
    EXPECT_EQ(find(twoEnds), twoEnds);
    for (std::size_t size = 0; size < plain.size(); ++size) {
        EXPECT_EQ(find(plain.substr(0, size)), "-");
    }
    for (const bool bigEndian : {true, false}) {
        std::string wide = "odd" + Utf16(plain, bigEndian) + "tail";
        EXPECT_EQ(find(wide), plain);
        const std::string bird =
            bigEndian ? std::string("\xD8\x3D\xDC\x26\x00\xE4", 6) : std::string("\x3D\xD8\x26\xDC\xE4\x00", 6);
        const std::size_t x = wide.find(Utf16("?>x", bigEndian)) + 4;
        wide.replace(x, 2, bird);
        EXPECT_EQ(find(wide), header + "\xF0\x9F\x90\xA6ä<?xpacket end=\"w\"?>");
        EXPECT_EQ(find(wide + packet).find('\0'), std::string::npos);
    }
}

TEST(XMPData, TruncationAtEveryByte) {
    const std::string packet =
        XMPData(Packet("<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>ä</rdf:li></rdf:Alt></dc:title>"
                       "<t:a rdf:parseType='Resource'><rdf:value>v</rdf:value><t:q>1</t:q></t:a>"))
            .SaveToBuffer();
    const std::size_t end = packet.find("</x:xmpmeta>") + 12;
    for (std::size_t size = packet.find("?>") + 3; size < end; ++size) {
        EXPECT_THROW(XMPData(packet.substr(0, size)), Exception) << size;
    }
}

TEST(XMPData, RealPacketsSurviveAndStand) {
    ForEachCorpusFile({"jpeg", "tiff", "psd", "photos"}, 10, [](const std::string& name, const auto& file) {
        const auto packet = XmpPacketScanner::FindPacket(file);
        if (!packet || name.find("broken") != name.npos) {
            return false;
        }
        const XMPData data(*packet);
        EXPECT_GT(data.GetNodeCount(), 0U);
        const std::string saved = data.SaveToBuffer();
        EXPECT_EQ(Dump(XMPData(saved)), Dump(data));
        EXPECT_EQ(XMPData(saved).SaveToBuffer(), saved);
        return true;
    });
}

} // namespace
} // namespace ImagingFramework
