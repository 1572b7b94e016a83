#pragma once

/// Finds fonts by what a phone needs for that, from then on and in this process. The files by which
/// a system does it are made for desktops: to read them takes a small phone a tenth of a second at
/// each start. To be called before Qt looks for fonts. Without an effect where no font is found so.
void usePhoneFonts();
