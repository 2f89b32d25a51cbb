#pragma once

namespace Kor {

class AnchorProperty;
class PropertyInstance;

/// Finds the anchors of the scene that an anchor could attach to: among the assets whose
/// "AssetNode" is bound, every anchor property of the other sense (child or parent),
/// whatever the anchor types, since which of them go together is the host's to say. One that is
/// inherited along several paths counts for each path, as the properties of a template are listed.
/// The first `capacity` property instances (null where none can be had) go to `found`; the
/// result counts all.
int FindCompatibleAnchors(const AnchorProperty& anchor, int capacity, PropertyInstance** found);

} // namespace Kor
