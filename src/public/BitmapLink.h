#pragma once

#include "Codecs/ObjectLink.h"

namespace Corvane::Rasterloom {

class Bitmap;

/// How a view or a provider finds its bitmap.
class BitmapLink : public Codecs::ObjectLink<Bitmap> {
public:
    using ObjectLink::ObjectLink;
};

} // namespace Corvane::Rasterloom
