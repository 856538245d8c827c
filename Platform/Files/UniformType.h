#pragma once

#include <QString>

/// Types of files, named by reverse domain names, and which type is a kind of which. Known are the types that notes
/// bring in or go out as; any other extension gets a name of its own ("dyn.EXTENSION") whose kind is told by the
/// system's MIME database. Any thread.

inline constexpr QLatin1StringView kUTTagClassFilenameExtension{"public.filename-extension"};

inline constexpr QLatin1StringView kUTTypeData{"public.data"};
inline constexpr QLatin1StringView kUTTypeImage{"public.image"};
inline constexpr QLatin1StringView kUTTypePNG{"public.png"};
inline constexpr QLatin1StringView kUTTypeJPEG{"public.jpeg"};
inline constexpr QLatin1StringView kUTTypeJPEG2000{"public.jpeg-2000"};
inline constexpr QLatin1StringView kUTTypeTIFF{"public.tiff"};
inline constexpr QLatin1StringView kUTTypeGIF{"com.compuserve.gif"};
inline constexpr QLatin1StringView kUTTypeHEIC{"public.heic"};
inline constexpr QLatin1StringView kUTTypeText{"public.text"};
inline constexpr QLatin1StringView kUTTypePlainText{"public.plain-text"};
inline constexpr QLatin1StringView kUTTypeMarkdown{"net.daringfireball.markdown"};
inline constexpr QLatin1StringView kUTTypeHTML{"public.html"};
inline constexpr QLatin1StringView kUTTypeRTF{"public.rtf"};
inline constexpr QLatin1StringView kUTTypeRTFD{"com.apple.rtfd"};
inline constexpr QLatin1StringView kUTTypePDF{"com.adobe.pdf"};

/// The type of a tag. Only file name extensions are tags here, without the dot, in any case; an empty one, or another
/// class of tags, gives a null string.
[[nodiscard]] QString UTTypeCreatePreferredIdentifierForTag(const QString &tagClass, const QString &tag);

/// Whether the first type is the second or a kind of it. Names are compared without regard to case.
[[nodiscard]] bool UTTypeConformsTo(const QString &type, const QString &conformsTo);
