#pragma once

#include "metadata/Xmp/XMPNodeType.h"
#include "metadata/Xmp/XmpNodeList.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace ImagingFramework {

class XMPNamespace;

/// A node of an XMP tree: a simple property with a value, an array with items, a structure with fields. Simple
/// properties and qualifiers can have qualifiers. Items of arrays have neither a namespace nor a name.
///
/// A call that does not fit the kind of the node fails with `UnexpectedException`, and an index outside a list with
/// `ArgumentOutOfRangeException` ("uintIndex"). Texts are cleaned as `ToXmlText` tells.
class XMPNode {
public:
    /// A null namespace and an empty name make an item. A value for a node that has none fails, and so does an unknown
    /// type.
    XMPNode(XMPNodeType type, const XMPNamespace* pNamespace, std::string_view name, std::string_view value);
    XMPNode(const XMPNode&) = delete;
    XMPNode& operator=(const XMPNode&) = delete;

    XMPNodeType GetNodeType() const noexcept { return m_type; }
    /// Without the prefix; empty for items.
    const std::string& GetName() const noexcept { return m_strName; }
    /// Items have none, asking them fails.
    const XMPNamespace& GetNamespace() const;
    const XMPNamespace* GetNamespaceOrNull() const noexcept { return m_pNamespace; }
    /// Of simple properties, qualifiers and items of a localized text.
    const std::string& GetValue() const;

    std::uint32_t GetQualifierCount() const { return Qualifiers().GetCount(); }
    XMPNode& GetQualifierRef(std::uint32_t uintIndex) const { return Qualifiers().At(uintIndex); }
    /// Null when there is none.
    XMPNode* GetQualifierRef(const XMPNamespace& ns, std::string_view name) const {
        return Qualifiers().Find(&ns, name);
    }
    /// Of arrays and localized texts.
    std::uint32_t GetArrayItemCount() const { return Items().GetCount(); }
    XMPNode& GetArrayItemRef(std::uint32_t uintIndex) const { return Items().At(uintIndex); }
    std::uint32_t GetStructFieldCount() const { return Fields().GetCount(); }
    XMPNode& GetStructFieldRef(std::uint32_t uintIndex) const { return Fields().At(uintIndex); }
    /// Null when there is none.
    XMPNode* GetStructFieldRef(const XMPNamespace& ns, std::string_view name) const { return Fields().Find(&ns, name); }

    /// Items or fields; none where the kind has none.
    const XmpNodeList& GetChildrenRef() const noexcept { return m_children; }
    const XmpNodeList& GetQualifiersRef() const noexcept { return m_qualifiers; }

    XMPNode& CreateArrayItem(XMPNodeType type, std::string_view value);
    XMPNode& CreateStructField(const XMPNamespace& ns, std::string_view name, XMPNodeType type, std::string_view value);
    XMPNode& CreateQualifier(const XMPNamespace& ns, std::string_view name, std::string_view value);
    /// The item of a language, which is made if it is not there; "x-default" stands first.
    XMPNode& CreateLocalizedText(std::string_view language, std::string_view value);
    void DeleteArrayItem(std::uint32_t uintIndex);
    /// Gives an item of this localized text another value.
    void UpdateLocalizedText(XMPNode& item, std::string_view value);

    /// The forms for a tree that is being read: they take ready nodes.
    XMPNode& AddArrayItemNoSync(std::shared_ptr<XMPNode> item);
    XMPNode& AddStructFieldNoSync(std::shared_ptr<XMPNode> field);
    XMPNode& AddQualifierNoSync(std::shared_ptr<XMPNode> qualifier);

    bool IsArray() const noexcept;
    /// Whether it holds a value and can have qualifiers.
    bool IsSimple() const noexcept;
    /// The value of the qualifier xml:lang; null when there is none.
    const std::string* GetLanguage() const;
    /// Fails with `UnexpectedException` for a name that cannot be written; the names of XML and RDF themselves are
    /// such.
    static void RequireWritableName(const XMPNamespace& ns, std::string_view name, XMPNodeType type);

private:
    const XmpNodeList& Qualifiers() const;
    const XmpNodeList& Items() const;
    const XmpNodeList& Fields() const;

    XMPNodeType m_type;
    const XMPNamespace* m_pNamespace;
    std::string m_strName;
    std::string m_strValue;
    XmpNodeList m_children; ///< items or fields
    XmpNodeList m_qualifiers;
};

} // namespace ImagingFramework
