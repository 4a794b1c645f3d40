#pragma once
/* Owners for what GLib hands out, and the error that a call of it fills in. */

#include <cerrno>
#include <memory>

#include <glib-object.h>

namespace vesk_port {

template <auto free_function> struct FreeWith {
    template <class Type> void operator()(Type *owned) const { free_function(owned); }
};

using KeyFile = std::unique_ptr<GKeyFile, FreeWith<g_key_file_free>>;
using GlibText = std::unique_ptr<char, FreeWith<g_free>>;
using GlibTexts = std::unique_ptr<char *, FreeWith<g_strfreev>>; /* ends with a null */
template <class Type> using GlibObject = std::unique_ptr<Type, FreeWith<g_object_unref>>;

class GlibError {
public:
    /* What the call is given: g_file_get_contents(..., error.out()). It may be used again for the next call. */
    GError **out()
    {
        g_clear_error(&error_);
        return &error_;
    }

    GlibError() = default;
    ~GlibError() { g_clear_error(&error_); }
    GlibError(const GlibError &) = delete;
    GlibError &operator=(const GlibError &) = delete;

    bool is(GQuark domain, int code) const { return g_error_matches(error_, domain, code); }

    /* The reason, for a sentence; empty when the call has not failed. */
    const char *message() const { return error_ ? error_->message : ""; }

    /* The negative errno for a file that cannot be written. */
    int file_code() const
    {
        if (is(G_FILE_ERROR, G_FILE_ERROR_NOSPC))
            return -ENOSPC;
        if (is(G_FILE_ERROR, G_FILE_ERROR_ROFS))
            return -EROFS;
        return is(G_FILE_ERROR, G_FILE_ERROR_ACCES) || is(G_FILE_ERROR, G_FILE_ERROR_PERM) ? -EACCES : -EIO;
    }

private:
    GError *error_ = nullptr;
};

} // namespace vesk_port
