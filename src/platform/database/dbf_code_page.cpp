#include "platform/database/dbf_code_page.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "platform/files/text_encoding.h"

namespace ostrel {

namespace {

// The characters of bytes 0x80 to 0xFF, in order; the control character of the same number where a
// code page has none, so that such a byte finds its way back.
constexpr char16_t kUpper437[] =
    u"ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜ¢£¥₧ƒ"
    u"áíóúñÑªº¿⌐¬½¼¡«»░▒▓│┤╡╢╖╕╣║╗╝╜╛┐"
    u"└┴┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪┘┌█▄▌▐▀"
    u"αßΓπΣσµτΦΘΩδ∞φε∩≡±≥≤⌠⌡÷≈°∙·√ⁿ²■\u00A0";
constexpr char16_t kUpper850[] =
    u"ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜø£Ø×ƒ"
    u"áíóúñÑªº¿®¬½¼¡«»░▒▓│┤ÁÂÀ©╣║╗╝¢¥┐"
    u"└┴┬├─┼ãÃ╚╔╩╦╠═╬¤ðÐÊËÈıÍÎÏ┘┌█▄¦Ì▀"
    u"ÓßÔÒõÕµþÞÚÛÙýÝ¯´\u00AD±‗¾¶§÷¸°¨·¹³²■\u00A0";
constexpr char16_t kUpper852[] =
    u"ÇüéâäůćçłëŐőîŹÄĆÉĹĺôöĽľŚśÖÜŤťŁ×č"
    u"áíóúĄąŽžĘę¬źČş«»░▒▓│┤ÁÂĚŞ╣║╗╝Żż┐"
    u"└┴┬├─┼Ăă╚╔╩╦╠═╬¤đĐĎËďŇÍÎě┘┌█▄ŢŮ▀"
    u"ÓßÔŃńňŠšŔÚŕŰýÝţ´\u00AD˝˛ˇ˘§÷¸°¨˙űŘř■\u00A0";
constexpr char16_t kUpper866[] =
    u"АБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯ"
    u"абвгдежзийклмноп░▒▓│┤╡╢╖╕╣║╗╝╜╛┐"
    u"└┴┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪┘┌█▄▌▐▀"
    u"рстуфхцчшщъыьэюяЁёЄєЇїЎў°∙·√№¤■\u00A0";
constexpr char16_t kUpper1250[] =
    u"€\u0081‚\u0083„…†‡\u0088‰Š‹ŚŤŽŹ\u0090‘’“”•–—\u0098™š›śťžź"
    u"\u00A0ˇ˘Ł¤Ą¦§¨©Ş«¬\u00AD®Ż°±˛ł´µ¶·¸ąş»Ľ˝ľż"
    u"ŔÁÂĂÄĹĆÇČÉĘËĚÍÎĎĐŃŇÓÔŐÖ×ŘŮÚŰÜÝŢß"
    u"ŕáâăäĺćçčéęëěíîďđńňóôőö÷řůúűüýţ˙";
constexpr char16_t kUpper1251[] =
    u"ЂЃ‚ѓ„…†‡€‰Љ‹ЊЌЋЏђ‘’“”•–—\u0098™љ›њќћџ"
    u"\u00A0ЎўЈ¤Ґ¦§Ё©Є«¬\u00AD®Ї°±Ііґµ¶·ё№є»јЅѕї"
    u"АБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯ"
    u"абвгдежзийклмнопрстуфхцчшщъыьэюя";

constexpr CodePage kPage437(kUpper437);
constexpr CodePage kPage850(kUpper850);
constexpr CodePage kPage852(kUpper852);
constexpr CodePage kPage866(kUpper866);
constexpr CodePage kPage1250(kUpper1250);
constexpr CodePage kPage1251(kUpper1251);
constexpr CodePage kPage1252(&FromCodePage1252);
constexpr CodePage kUtf8(&AsUtf8);

struct LanguageByte {
  std::uint8_t Byte;
  CodePage Page;
};

constexpr LanguageByte kLanguageBytes[] = {
    {0x01, kPage437},  {0x09, kPage437},  {0x0B, kPage437},  {0x0D, kPage437},  {0x0F, kPage437},
    {0x11, kPage437},  {0x15, kPage437},  {0x18, kPage437},  {0x19, kPage437},  {0x1B, kPage437},
    {0x02, kPage850},  {0x0A, kPage850},  {0x0E, kPage850},  {0x10, kPage850},  {0x12, kPage850},
    {0x14, kPage850},  {0x16, kPage850},  {0x1A, kPage850},  {0x1D, kPage850},  {0x25, kPage850},
    {0x37, kPage850},  {0x1F, kPage852},  {0x22, kPage852},  {0x23, kPage852},  {0x40, kPage852},
    {0x64, kPage852},  {0x87, kPage852},  {0x26, kPage866},  {0x65, kPage866},  {0xC8, kPage1250},
    {0xC9, kPage1251}, {0x03, kPage1252}, {0x57, kPage1252}, {0x58, kPage1252}, {0x59, kPage1252},
    {0xF0, kUtf8},
};

static_assert(std::size(kUpper437) == 129 && std::size(kUpper850) == 129 &&
              std::size(kUpper852) == 129 && std::size(kUpper866) == 129 &&
              std::size(kUpper1250) == 129 && std::size(kUpper1251) == 129);

void AppendUtf8(std::string& text, char16_t character) {
  const auto byte = [&text](int bits) { text += static_cast<char>(bits); };
  if (character < 0x800) {
    byte(0xC0 | (character >> 6));
  } else {
    byte(0xE0 | (character >> 12));
    byte(0x80 | ((character >> 6) & 0x3F));
  }
  byte(0x80 | (character & 0x3F));
}

bool IsAscii(char character) { return static_cast<unsigned char>(character) < 0x80; }

}  // namespace

CodePage CodePageOf(std::uint8_t languageByte) {
  const auto* const found = std::find_if(
      std::begin(kLanguageBytes), std::end(kLanguageBytes),
      [languageByte](const LanguageByte& entry) { return entry.Byte == languageByte; });
  return found == std::end(kLanguageBytes) ? kPage1252 : found->Page;
}

std::string CodePage::ToUtf8(std::string_view bytes) const {
  if (reader_ != nullptr) return reader_(bytes);
  if (std::all_of(bytes.begin(), bytes.end(), IsAscii)) return std::string(bytes);
  std::string text;
  text.reserve(bytes.size() * 2);
  for (const char byte : bytes) {
    if (IsAscii(byte)) {
      text += byte;
    } else {
      AppendUtf8(text, upperHalf_[static_cast<unsigned char>(byte) - 0x80]);
    }
  }
  return text;
}

}  // namespace ostrel
