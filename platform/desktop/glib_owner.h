#pragma once
/* Owners of what GLib hands out: objects, texts, errors and sources of the main loop. */

#include <cerrno>
#include <memory>
#include <utility>

#include <glib-object.h>

namespace vesk_port {

template <auto free_function> struct GlibFree {
    template <class Object> void operator()(Object *object) const { free_function(object); }
};

/* An object with the function that frees it: GlibOwner<GKeyFile, g_key_file_free>. */
template <class Object, auto free_function> using GlibOwner = std::unique_ptr<Object, GlibFree<free_function>>;

using GlibText = GlibOwner<char, g_free>;
using GlibTexts = GlibOwner<char *, g_strfreev>; /* ends with a null */
using KeyFile = GlibOwner<GKeyFile, g_key_file_free>;

/* The error of one call: call(..., error.place()). */
class GlibError {
public:
    GlibError() = default;
    ~GlibError() { g_clear_error(&error_); }
    GlibError(const GlibError &) = delete;
    GlibError &operator=(const GlibError &) = delete;

    /* Where a call is to put its error; an earlier one is freed. */
    GError **place()
    {
        g_clear_error(&error_);
        return &error_;
    }

    explicit operator bool() const { return error_ != nullptr; }
    const GError *operator->() const { return error_; }
    const GError *get() const { return error_; }

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

/* A source of the default main context, which is removed with its owner. */
class GlibSource {
public:
    GlibSource() = default;
    explicit GlibSource(unsigned id) : id_(id) {}
    ~GlibSource() { end(); }
    GlibSource(GlibSource &&other) noexcept : id_(std::exchange(other.id_, 0)) {}
    GlibSource &operator=(GlibSource &&other) noexcept
    {
        std::swap(id_, other.id_);
        other.end();
        return *this;
    }

    void end()
    {
        if (const unsigned id = std::exchange(id_, 0))
            g_source_remove(id);
    }

    /* The source ends by itself: its function is about to return G_SOURCE_REMOVE. */
    void let_end() { id_ = 0; }

    explicit operator bool() const { return id_ != 0; }

private:
    unsigned id_ = 0;
};

} // namespace vesk_port
