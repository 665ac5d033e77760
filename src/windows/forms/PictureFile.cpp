// Pictures by the system's imaging component.

#include "windows/forms/PictureFile.h"

#include <algorithm>

#include "windows/com/Ptr.h"
#include "windows/com/Text.h"
// It needs the headers above.
#include <wincodec.h>

namespace windows::forms {

namespace {

using com::Ptr;

/// As many rows of blue, green, red, alpha as it is high, the first at the top.
HBITMAP bitmapOf(IWICBitmapSource& source, UINT width, UINT height) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = static_cast<LONG>(width);
  info.bmiHeader.biHeight = -static_cast<LONG>(height);
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* pixels = nullptr;
  const HBITMAP bitmap = ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
  if (bitmap == nullptr) return nullptr;
  if (SUCCEEDED(source.CopyPixels(nullptr, width * 4, width * height * 4, static_cast<BYTE*>(pixels))))
    return bitmap;
  ::DeleteObject(bitmap);
  return nullptr;
}

}  // namespace

HBITMAP pictureFile(std::string_view path, int width, int height) {
  Ptr<IWICImagingFactory> factory;
  Ptr<IWICBitmapDecoder> decoder;
  Ptr<IWICBitmapFrameDecode> frame;
  Ptr<IWICBitmapScaler> scaler;
  Ptr<IWICFormatConverter> converter;
  UINT wide = 0;
  UINT high = 0;
  if (FAILED(::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                IID_IWICImagingFactory, reinterpret_cast<void**>(factory.out()))) ||
      FAILED(factory->CreateDecoderFromFilename(com::wide(path).c_str(), nullptr, GENERIC_READ,
                                                WICDecodeMetadataCacheOnDemand, decoder.out())) ||
      FAILED(decoder->GetFrame(0, frame.out())) || FAILED(frame->GetSize(&wide, &high)) || wide == 0 ||
      high == 0) {
    return nullptr;
  }
  const double factor =
      std::min({static_cast<double>(width) / wide, static_cast<double>(height) / high, 1.0});
  wide = std::max(1U, static_cast<UINT>(wide * factor));
  high = std::max(1U, static_cast<UINT>(high * factor));
  if (FAILED(factory->CreateBitmapScaler(scaler.out())) ||
      FAILED(scaler->Initialize(frame.get(), wide, high, WICBitmapInterpolationModeFant)) ||
      FAILED(factory->CreateFormatConverter(converter.out())) ||
      FAILED(converter->Initialize(scaler.get(), GUID_WICPixelFormat32bppBGR, WICBitmapDitherTypeNone,
                                   nullptr, 0, WICBitmapPaletteTypeCustom))) {
    return nullptr;
  }
  return bitmapOf(*converter.get(), wide, high);
}

}  // namespace windows::forms
