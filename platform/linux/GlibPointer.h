#pragma once

#include <glib-object.h>

#include <memory>

/// Owning pointers for GLib's types, each with the right function to free it.

struct GlibFree
{
    void operator()(GError *error) const { g_error_free(error); }
    void operator()(GVariant *variant) const { g_variant_unref(variant); }
    void operator()(GHashTable *table) const { g_hash_table_unref(table); }
};

using GVariantPointer = std::unique_ptr<GVariant, GlibFree>;
using GHashTablePointer = std::unique_ptr<GHashTable, GlibFree>;
using GErrorPointer = std::unique_ptr<GError, GlibFree>;

struct GObjectUnref
{
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// Owns one reference to a GObject of the C type `T`.
template <typename T>
using GObjectPointer = std::unique_ptr<T, GObjectUnref>;
