#include "fuzz/support/picturereader.h"

void wb::FuzzOne(ByteView bytes)
{
    FuzzPicture(bytes, &GraphicsLibrary::VTGF_Read_DDS);
}
