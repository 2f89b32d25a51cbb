#pragma once

namespace Kor {

/// The name of a class for messages, such as "an Asset"; "an object" where the number is no
/// class's.
const char* NameWithArticle(int classId) noexcept;

} // namespace Kor
