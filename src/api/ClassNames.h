#pragma once

namespace Kor {

/// The name of a class for messages, such as "Asset"; "object" where the number is no class's.
const char* NameOfClass(int classId) noexcept;

/// "a" or "an", whichever goes in front of such a name.
const char* ArticleOf(const char* name) noexcept;

} // namespace Kor
