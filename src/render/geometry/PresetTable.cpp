#include "render/geometry/PresetTable.h"

#include <iterator>

// ECMA-376 part 1, 20.1.9 and its electronic annex: the shapes a:prstGeom names, by name.

// clang-format off
namespace render {

const PresetText PresetTable[] = {
{"accentBorderCallout1",
"adj1 18750;adj2 -8333;adj3 112500;adj4 -38333",
"y1 */ h adj1 100000;x1 */ w adj2 100000;y2 */ h adj3 100000;x2 */ w adj4 100000",
"l t r b",
"M l t L r t L r b L l b Z|fill=none M x1 t Z L x1 b|fill=none M x1 y1 L x2 y2"},
{"accentBorderCallout2",
"adj1 18750;adj2 -8333;adj3 18750;adj4 -16667;adj5 112500;adj6 -46667",
"y1 */ h adj1 100000;x1 */ w adj2 100000;y2 */ h adj3 100000;x2 */ w adj4 100000;y3 */ h adj5 "
"100000;x3 */ w adj6 100000",
"l t r b",
"M l t L r t L r b L l b Z|fill=none M x1 t Z L x1 b|fill=none M x1 y1 L x2 y2 L x3 y3"},
{"accentBorderCallout3",
"adj1 18750;adj2 -8333;adj3 18750;adj4 -16667;adj5 100000;adj6 -16667;adj7 112963;adj8 -8333",
"y1 */ h adj1 100000;x1 */ w adj2 100000;y2 */ h adj3 100000;x2 */ w adj4 100000;y3 */ h adj5 "
"100000;x3 */ w adj6 100000;y4 */ h adj7 100000;x4 */ w adj8 100000",
"l t r b",
"M l t L r t L r b L l b Z|fill=none M x1 t Z L x1 b|fill=none M x1 y1 L x2 y2 L x3 y3 L x4 y4"},
{"accentCallout1",
"adj1 18750;adj2 -8333;adj3 112500;adj4 -38333",
"y1 */ h adj1 100000;x1 */ w adj2 100000;y2 */ h adj3 100000;x2 */ w adj4 100000",
"l t r b",
"stroke=0 M l t L r t L r b L l b Z|fill=none M x1 t Z L x1 b|fill=none M x1 y1 L x2 y2"},
{"accentCallout2",
"adj1 18750;adj2 -8333;adj3 18750;adj4 -16667;adj5 112500;adj6 -46667",
"y1 */ h adj1 100000;x1 */ w adj2 100000;y2 */ h adj3 100000;x2 */ w adj4 100000;y3 */ h adj5 "
"100000;x3 */ w adj6 100000",
"l t r b",
"stroke=0 M l t L r t L r b L l b Z|fill=none M x1 t Z L x1 b|fill=none M x1 y1 L x2 y2 L x3 y3"},
{"accentCallout3",
"adj1 18750;adj2 -8333;adj3 18750;adj4 -16667;adj5 100000;adj6 -16667;adj7 112963;adj8 -8333",
"y1 */ h adj1 100000;x1 */ w adj2 100000;y2 */ h adj3 100000;x2 */ w adj4 100000;y3 */ h adj5 "
"100000;x3 */ w adj6 100000;y4 */ h adj7 100000;x4 */ w adj8 100000",
"l t r b",
"stroke=0 M l t L r t L r b L l b Z|fill=none M x1 t Z L x1 b|fill=none M x1 y1 L x2 y2 L x3 y3 L x4 "
"y4"},
{"actionButtonBackPrevious",
"",
"dx2 */ ss 3 8;g9 +- vc 0 dx2;g10 +- vc dx2 0;g11 +- hc 0 dx2;g12 +- hc dx2 0",
"l t r b",
"stroke=0 M l t L r t L r b L l b Z M g11 vc L g12 g9 L g12 g10 Z|fill=darken stroke=0 M g11 vc L g12"
" g9 L g12 g10 Z|fill=none M g11 vc L g12 g9 L g12 g10 Z|fill=none M l t L r t L r b L l b Z"},
{"actionButtonBeginning",
"",
"dx2 */ ss 3 8;g9 +- vc 0 dx2;g10 +- vc dx2 0;g11 +- hc 0 dx2;g12 +- hc dx2 0;g13 */ ss 3 4;g14 */ "
"g13 1 8;g15 */ g13 1 4;g16 +- g11 g14 0;g17 +- g11 g15 0",
"l t r b",
"stroke=0 M l t L r t L r b L l b Z M g17 vc L g12 g9 L g12 g10 Z M g16 g9 L g11 g9 L g11 g10 L g16 "
"g10 Z|fill=darken stroke=0 M g17 vc L g12 g9 L g12 g10 Z M g16 g9 L g11 g9 L g11 g10 L g16 g10 "
"Z|fill=none M g17 vc L g12 g9 L g12 g10 Z M g16 g9 L g16 g10 L g11 g10 L g11 g9 Z|fill=none M l t L "
"r t L r b L l b Z"},
{"actionButtonBlank",
"",
"",
"l t r b",
"M l t L r t L r b L l b Z"},
{"actionButtonDocument",
"",
"dx2 */ ss 3 8;g9 +- vc 0 dx2;g10 +- vc dx2 0;dx1 */ ss 9 32;g11 +- hc 0 dx1;g12 +- hc dx1 0;g13 */ "
"ss 3 16;g14 +- g12 0 g13;g15 +- g9 g13 0",
"l t r b",
"stroke=0 M l t L r t L r b L l b Z M g11 g9 L g14 g9 L g12 g15 L g12 g10 L g11 g10 Z|fill=darkenLess"
" stroke=0 M g11 g9 L g14 g9 L g14 g15 L g12 g15 L g12 g10 L g11 g10 Z|fill=darken stroke=0 M g14 g9 "
"L g14 g15 L g12 g15 Z|fill=none M g11 g9 L g14 g9 L g12 g15 L g12 g10 L g11 g10 Z M g12 g15 L g14 "
"g15 L g14 g9|fill=none M l t L r t L r b L l b Z"},
{"actionButtonEnd",
"",
"dx2 */ ss 3 8;g9 +- vc 0 dx2;g10 +- vc dx2 0;g11 +- hc 0 dx2;g12 +- hc dx2 0;g13 */ ss 3 4;g14 */ "
"g13 3 4;g15 */ g13 7 8;g16 +- g11 g14 0;g17 +- g11 g15 0",
"l t r b",
"stroke=0 M l t L r t L r b L l b Z M g16 vc L g11 g9 L g11 g10 Z M g17 g9 L g12 g9 L g12 g10 L g17 "
"g10 Z|fill=darken stroke=0 M g16 vc L g11 g9 L g11 g10 Z M g17 g9 L g12 g9 L g12 g10 L g17 g10 "
"Z|fill=none M g16 vc L g11 g10 L g11 g9 Z M g17 g9 L g12 g9 L g12 g10 L g17 g10 Z|fill=none M l t L "
"r t L r b L l b Z"},
{"actionButtonForwardNext",
"",
"dx2 */ ss 3 8;g9 +- vc 0 dx2;g10 +- vc dx2 0;g11 +- hc 0 dx2;g12 +- hc dx2 0",
"l t r b",
"stroke=0 M l t L r t L r b L l b Z M g12 vc L g11 g9 L g11 g10 Z|fill=darken stroke=0 M g12 vc L g11"
" g9 L g11 g10 Z|fill=none M g12 vc L g11 g10 L g11 g9 Z|fill=none M l t L r t L r b L l b Z"},
{"actionButtonHelp",
"",
"dx2 */ ss 3 8;g9 +- vc 0 dx2;g11 +- hc 0 dx2;g13 */ ss 3 4;g14 */ g13 1 7;g15 */ g13 3 14;g16 */ g13"
" 2 7;g19 */ g13 3 7;g20 */ g13 4 7;g21 */ g13 17 28;g23 */ g13 21 28;g24 */ g13 11 14;g27 +- g9 g16 "
"0;g29 +- g9 g21 0;g30 +- g9 g23 0;g31 +- g9 g24 0;g33 +- g11 g15 0;g36 +- g11 g19 0;g37 +- g11 g20 "
"0;g41 */ g13 1 14;g42 */ g13 3 28",
"l t r b",
"stroke=0 M l t L r t L r b L l b Z M g33 g27 A g16 g16 cd2 cd2 A g14 g15 0 cd4 A g41 g42 3cd4 "
"-5400000 L g37 g30 L g36 g30 L g36 g29 A g14 g15 cd2 cd4 A g41 g42 cd4 -5400000 A g14 g14 0 "
"-10800000 Z M hc g31 A g42 g42 3cd4 21600000 Z|fill=darken stroke=0 M g33 g27 A g16 g16 cd2 cd2 A "
"g14 g15 0 cd4 A g41 g42 3cd4 -5400000 L g37 g30 L g36 g30 L g36 g29 A g14 g15 cd2 cd4 A g41 g42 cd4 "
"-5400000 A g14 g14 0 -10800000 Z M hc g31 A g42 g42 3cd4 21600000 Z|fill=none M g33 g27 A g16 g16 "
"cd2 cd2 A g14 g15 0 cd4 A g41 g42 3cd4 -5400000 L g37 g30 L g36 g30 L g36 g29 A g14 g15 cd2 cd4 A "
"g41 g42 cd4 -5400000 A g14 g14 0 -10800000 Z M hc g31 A g42 g42 3cd4 21600000 Z|fill=none M l t L r "
"t L r b L l b Z"},
{"actionButtonHome",
"",
"dx2 */ ss 3 8;g9 +- vc 0 dx2;g10 +- vc dx2 0;g11 +- hc 0 dx2;g12 +- hc dx2 0;g13 */ ss 3 4;g14 */ "
"g13 1 16;g15 */ g13 1 8;g16 */ g13 3 16;g17 */ g13 5 16;g18 */ g13 7 16;g19 */ g13 9 16;g20 */ g13 "
"11 16;g21 */ g13 3 4;g22 */ g13 13 16;g23 */ g13 7 8;g24 +- g9 g14 0;g25 +- g9 g16 0;g26 +- g9 g17 "
"0;g27 +- g9 g21 0;g28 +- g11 g15 0;g29 +- g11 g18 0;g30 +- g11 g19 0;g31 +- g11 g20 0;g32 +- g11 g22"
" 0;g33 +- g11 g23 0",
"l t r b",
"stroke=0 M l t L r t L r b L l b Z M hc g9 L g11 vc L g28 vc L g28 g10 L g33 g10 L g33 vc L g12 vc L"
" g32 g26 L g32 g24 L g31 g24 L g31 g25 Z|fill=darkenLess stroke=0 M g32 g26 L g32 g24 L g31 g24 L "
"g31 g25 Z M g28 vc L g28 g10 L g29 g10 L g29 g27 L g30 g27 L g30 g10 L g33 g10 L g33 vc "
"Z|fill=darken stroke=0 M hc g9 L g11 vc L g12 vc Z M g29 g27 L g30 g27 L g30 g10 L g29 g10 "
"Z|fill=none M hc g9 L g31 g25 L g31 g24 L g32 g24 L g32 g26 L g12 vc L g33 vc L g33 g10 L g28 g10 L "
"g28 vc L g11 vc Z M g31 g25 L g32 g26 M g33 vc L g28 vc M g29 g10 L g29 g27 L g30 g27 L g30 "
"g10|fill=none M l t L r t L r b L l b Z"},
{"actionButtonInformation",
"",
"dx2 */ ss 3 8;g9 +- vc 0 dx2;g11 +- hc 0 dx2;g13 */ ss 3 4;g14 */ g13 1 32;g17 */ g13 5 16;g18 */ "
"g13 3 8;g19 */ g13 13 32;g20 */ g13 19 32;g22 */ g13 11 16;g23 */ g13 13 16;g24 */ g13 7 8;g25 +- g9"
" g14 0;g28 +- g9 g17 0;g29 +- g9 g18 0;g30 +- g9 g23 0;g31 +- g9 g24 0;g32 +- g11 g17 0;g34 +- g11 "
"g19 0;g35 +- g11 g20 0;g37 +- g11 g22 0;g38 */ g13 3 32",
"l t r b",
"stroke=0 M l t L r t L r b L l b Z M hc g9 A dx2 dx2 3cd4 21600000 Z|fill=darken stroke=0 M hc g9 A "
"dx2 dx2 3cd4 21600000 Z M hc g25 A g38 g38 3cd4 21600000 M g32 g28 L g32 g29 L g34 g29 L g34 g30 L "
"g32 g30 L g32 g31 L g37 g31 L g37 g30 L g35 g30 L g35 g28 Z|fill=lighten stroke=0 M hc g25 A g38 g38"
" 3cd4 21600000 M g32 g28 L g35 g28 L g35 g30 L g37 g30 L g37 g31 L g32 g31 L g32 g30 L g34 g30 L g34"
" g29 L g32 g29 Z|fill=none M hc g9 A dx2 dx2 3cd4 21600000 Z M hc g25 A g38 g38 3cd4 21600000 M g32 "
"g28 L g35 g28 L g35 g30 L g37 g30 L g37 g31 L g32 g31 L g32 g30 L g34 g30 L g34 g29 L g32 g29 "
"Z|fill=none M l t L r t L r b L l b Z"},
{"actionButtonMovie",
"",
"dx2 */ ss 3 8;g9 +- vc 0 dx2;g11 +- hc 0 dx2;g12 +- hc dx2 0;g13 */ ss 3 4;g14 */ g13 1455 21600;g15"
" */ g13 1905 21600;g16 */ g13 2325 21600;g17 */ g13 16155 21600;g18 */ g13 17010 21600;g19 */ g13 "
"19335 21600;g20 */ g13 19725 21600;g21 */ g13 20595 21600;g22 */ g13 5280 21600;g23 */ g13 5730 "
"21600;g24 */ g13 6630 21600;g25 */ g13 7492 21600;g26 */ g13 9067 21600;g27 */ g13 9555 21600;g28 */"
" g13 13342 21600;g29 */ g13 14580 21600;g30 */ g13 15592 21600;g31 +- g11 g14 0;g32 +- g11 g15 0;g33"
" +- g11 g16 0;g34 +- g11 g17 0;g35 +- g11 g18 0;g36 +- g11 g19 0;g37 +- g11 g20 0;g38 +- g11 g21 "
"0;g39 +- g9 g22 0;g40 +- g9 g23 0;g41 +- g9 g24 0;g42 +- g9 g25 0;g43 +- g9 g26 0;g44 +- g9 g27 "
"0;g45 +- g9 g28 0;g46 +- g9 g29 0;g47 +- g9 g30 0",
"l t r b",
"stroke=0 M l t L r t L r b L l b Z M g11 g39 L g11 g44 L g31 g44 L g32 g43 L g33 g43 L g33 g47 L g35"
" g47 L g35 g45 L g36 g45 L g38 g46 L g12 g46 L g12 g41 L g38 g41 L g37 g42 L g35 g42 L g35 g41 L g34"
" g40 L g32 g40 L g31 g39 Z|fill=darken stroke=0 M g11 g39 L g11 g44 L g31 g44 L g32 g43 L g33 g43 L "
"g33 g47 L g35 g47 L g35 g45 L g36 g45 L g38 g46 L g12 g46 L g12 g41 L g38 g41 L g37 g42 L g35 g42 L "
"g35 g41 L g34 g40 L g32 g40 L g31 g39 Z|fill=none M g11 g39 L g31 g39 L g32 g40 L g34 g40 L g35 g41 "
"L g35 g42 L g37 g42 L g38 g41 L g12 g41 L g12 g46 L g38 g46 L g36 g45 L g35 g45 L g35 g47 L g33 g47 "
"L g33 g43 L g32 g43 L g31 g44 L g11 g44 Z|fill=none M l t L r t L r b L l b Z"},
{"actionButtonReturn",
"",
"dx2 */ ss 3 8;g9 +- vc 0 dx2;g10 +- vc dx2 0;g11 +- hc 0 dx2;g12 +- hc dx2 0;g13 */ ss 3 4;g14 */ "
"g13 7 8;g15 */ g13 3 4;g16 */ g13 5 8;g17 */ g13 3 8;g18 */ g13 1 4;g19 +- g9 g15 0;g20 +- g9 g16 "
"0;g21 +- g9 g18 0;g22 +- g11 g14 0;g23 +- g11 g15 0;g24 +- g11 g16 0;g25 +- g11 g17 0;g26 +- g11 g18"
" 0;g27 */ g13 1 8",
"l t r b",
"stroke=0 M l t L r t L r b L l b Z M g12 g21 L g23 g9 L hc g21 L g24 g21 L g24 g20 A g27 g27 0 cd4 L"
" g25 g19 A g27 g27 cd4 cd4 L g26 g21 L g11 g21 L g11 g20 A g17 g17 cd2 -5400000 L hc g10 A g17 g17 "
"cd4 -5400000 L g22 g21 Z|fill=darken stroke=0 M g12 g21 L g23 g9 L hc g21 L g24 g21 L g24 g20 A g27 "
"g27 0 cd4 L g25 g19 A g27 g27 cd4 cd4 L g26 g21 L g11 g21 L g11 g20 A g17 g17 cd2 -5400000 L hc g10 "
"A g17 g17 cd4 -5400000 L g22 g21 Z|fill=none M g12 g21 L g22 g21 L g22 g20 A g17 g17 0 cd4 L g25 g10"
" A g17 g17 cd4 cd4 L g11 g21 L g26 g21 L g26 g20 A g27 g27 cd2 -5400000 L hc g19 A g27 g27 cd4 "
"-5400000 L g24 g21 L hc g21 L g23 g9 Z|fill=none M l t L r t L r b L l b Z"},
{"actionButtonSound",
"",
"dx2 */ ss 3 8;g9 +- vc 0 dx2;g10 +- vc dx2 0;g11 +- hc 0 dx2;g12 +- hc dx2 0;g13 */ ss 3 4;g14 */ "
"g13 1 8;g15 */ g13 5 16;g16 */ g13 5 8;g17 */ g13 11 16;g18 */ g13 3 4;g19 */ g13 7 8;g20 +- g9 g14 "
"0;g21 +- g9 g15 0;g22 +- g9 g17 0;g23 +- g9 g19 0;g24 +- g11 g15 0;g25 +- g11 g16 0;g26 +- g11 g18 0",
"l t r b",
"stroke=0 M l t L r t L r b L l b Z M g11 g21 L g11 g22 L g24 g22 L g25 g10 L g25 g9 L g24 g21 "
"Z|fill=darken stroke=0 M g11 g21 L g11 g22 L g24 g22 L g25 g10 L g25 g9 L g24 g21 Z|fill=none M g11 "
"g21 L g24 g21 L g25 g9 L g25 g10 L g24 g22 L g11 g22 Z M g26 g21 L g12 g20 M g26 vc L g12 vc M g26 "
"g22 L g12 g23|fill=none M l t L r t L r b L l b Z"},
{"arc",
"adj1 16200000;adj2 0",
"stAng pin 0 adj1 21599999;enAng pin 0 adj2 21599999;sw11 +- enAng 0 stAng;sw12 +- sw11 21600000 "
"0;swAng ?: sw11 sw11 sw12;wt1 sin wd2 stAng;ht1 cos hd2 stAng;dx1 cat2 wd2 ht1 wt1;dy1 sat2 hd2 ht1 "
"wt1;wt2 sin wd2 enAng;ht2 cos hd2 enAng;dx2 cat2 wd2 ht2 wt2;dy2 sat2 hd2 ht2 wt2;x1 +- hc dx1 0;y1 "
"+- vc dy1 0;x2 +- hc dx2 0;y2 +- vc dy2 0;sw0 +- 21600000 0 stAng;da1 +- swAng 0 sw0;g1 max x1 x2;ir"
" ?: da1 r g1;sw1 +- cd4 0 stAng;sw2 +- 27000000 0 stAng;sw3 ?: sw1 sw1 sw2;da2 +- swAng 0 sw3;g5 max"
" y1 y2;ib ?: da2 b g5;sw4 +- cd2 0 stAng;sw5 +- 32400000 0 stAng;sw6 ?: sw4 sw4 sw5;da3 +- swAng 0 "
"sw6;g9 min x1 x2;il ?: da3 l g9;sw7 +- 3cd4 0 stAng;sw8 +- 37800000 0 stAng;sw9 ?: sw7 sw7 sw8;da4 "
"+- swAng 0 sw9;g13 min y1 y2;it ?: da4 t g13",
"il it ir ib",
"stroke=0 M x1 y1 A wd2 hd2 stAng swAng L hc vc Z|fill=none M x1 y1 A wd2 hd2 stAng swAng"},
{"bentArrow",
"adj1 25000;adj2 25000;adj3 25000;adj4 43750",
"a2 pin 0 adj2 50000;maxAdj1 */ a2 2 1;a1 pin 0 adj1 maxAdj1;a3 pin 0 adj3 50000;th */ ss a1 "
"100000;aw2 */ ss a2 100000;th2 */ th 1 2;dh2 +- aw2 0 th2;ah */ ss a3 100000;bw +- r 0 ah;bh +- b 0 "
"dh2;bs min bw bh;maxAdj4 */ 100000 bs ss;a4 pin 0 adj4 maxAdj4;bd */ ss a4 100000;bd3 +- bd 0 th;bd2"
" max bd3 0;x3 +- th bd2 0;x4 +- r 0 ah;y3 +- dh2 th 0;y4 +- y3 dh2 0;y5 +- dh2 bd 0",
"l t r b",
"M l b L l y5 A bd bd cd2 cd4 L x4 dh2 L x4 t L r aw2 L x4 y4 L x4 y3 L x3 y3 A bd2 bd2 3cd4 -5400000"
" L th b Z"},
{"bentConnector2",
"",
"",
"l t r b",
"fill=none M l t L r t L r b"},
{"bentConnector3",
"adj1 50000",
"x1 */ w adj1 100000",
"l t r b",
"fill=none M l t L x1 t L x1 b L r b"},
{"bentConnector4",
"adj1 50000;adj2 50000",
"x1 */ w adj1 100000;y2 */ h adj2 100000",
"l t r b",
"fill=none M l t L x1 t L x1 y2 L r y2 L r b"},
{"bentConnector5",
"adj1 50000;adj2 50000;adj3 50000",
"x1 */ w adj1 100000;x3 */ w adj3 100000;y2 */ h adj2 100000",
"l t r b",
"fill=none M l t L x1 t L x1 y2 L x3 y2 L x3 b L r b"},
{"bentUpArrow",
"adj1 25000;adj2 25000;adj3 25000",
"a1 pin 0 adj1 50000;a2 pin 0 adj2 50000;a3 pin 0 adj3 50000;y1 */ ss a3 100000;dx1 */ ss a2 50000;x1"
" +- r 0 dx1;dx3 */ ss a2 100000;x3 +- r 0 dx3;dx2 */ ss a1 200000;x2 +- x3 0 dx2;x4 +- x3 dx2 0;dy2 "
"*/ ss a1 100000;y2 +- b 0 dy2",
"l y2 x4 b",
"M l y2 L x2 y2 L x2 y1 L x1 y1 L x3 t L r y1 L x4 y1 L x4 b L l b Z"},
{"bevel",
"adj 12500",
"a pin 0 adj 50000;x1 */ ss a 100000;x2 +- r 0 x1;y2 +- b 0 x1",
"x1 x1 x2 y2",
"stroke=0 M x1 x1 L x2 x1 L x2 y2 L x1 y2 Z|fill=lightenLess stroke=0 M l t L r t L x2 x1 L x1 x1 "
"Z|fill=darkenLess stroke=0 M l b L x1 y2 L x2 y2 L r b Z|fill=lighten stroke=0 M l t L x1 x1 L x1 y2"
" L l b Z|fill=darken stroke=0 M r t L r b L x2 y2 L x2 x1 Z|fill=none M l t L r t L r b L l b Z M x1"
" x1 L x2 x1 L x2 y2 L x1 y2 Z M l t L x1 x1 M l b L x1 y2 M r t L x2 x1 M r b L x2 y2"},
{"blockArc",
"adj1 10800000;adj2 0;adj3 25000",
"stAng pin 0 adj1 21599999;istAng pin 0 adj2 21599999;a3 pin 0 adj3 50000;sw11 +- istAng 0 stAng;sw12"
" +- sw11 21600000 0;swAng ?: sw11 sw11 sw12;iswAng +- 0 0 swAng;wt1 sin wd2 stAng;ht1 cos hd2 "
"stAng;wt3 sin wd2 istAng;ht3 cos hd2 istAng;dx1 cat2 wd2 ht1 wt1;dy1 sat2 hd2 ht1 wt1;dx3 cat2 wd2 "
"ht3 wt3;dy3 sat2 hd2 ht3 wt3;x1 +- hc dx1 0;y1 +- vc dy1 0;x3 +- hc dx3 0;y3 +- vc dy3 0;dr */ ss a3"
" 100000;iwd2 +- wd2 0 dr;ihd2 +- hd2 0 dr;wt2 sin iwd2 istAng;ht2 cos ihd2 istAng;wt4 sin iwd2 "
"stAng;ht4 cos ihd2 stAng;dx2 cat2 iwd2 ht2 wt2;dy2 sat2 ihd2 ht2 wt2;dx4 cat2 iwd2 ht4 wt4;dy4 sat2 "
"ihd2 ht4 wt4;x2 +- hc dx2 0;y2 +- vc dy2 0;x4 +- hc dx4 0;y4 +- vc dy4 0;sw0 +- 21600000 0 stAng;da1"
" +- swAng 0 sw0;g1 max x1 x2;g2 max x3 x4;g3 max g1 g2;ir ?: da1 r g3;sw1 +- cd4 0 stAng;sw2 +- "
"27000000 0 stAng;sw3 ?: sw1 sw1 sw2;da2 +- swAng 0 sw3;g5 max y1 y2;g6 max y3 y4;g7 max g5 g6;ib ?: "
"da2 b g7;sw4 +- cd2 0 stAng;sw5 +- 32400000 0 stAng;sw6 ?: sw4 sw4 sw5;da3 +- swAng 0 sw6;g9 min x1 "
"x2;g10 min x3 x4;g11 min g9 g10;il ?: da3 l g11;sw7 +- 3cd4 0 stAng;sw8 +- 37800000 0 stAng;sw9 ?: "
"sw7 sw7 sw8;da4 +- swAng 0 sw9;g13 min y1 y2;g14 min y3 y4;g15 min g13 g14;it ?: da4 t g15",
"il it ir ib",
"M x1 y1 A wd2 hd2 stAng swAng L x2 y2 A iwd2 ihd2 istAng iswAng Z"},
{"borderCallout1",
"adj1 18750;adj2 -8333;adj3 112500;adj4 -38333",
"y1 */ h adj1 100000;x1 */ w adj2 100000;y2 */ h adj3 100000;x2 */ w adj4 100000",
"l t r b",
"M l t L r t L r b L l b Z|fill=none M x1 y1 L x2 y2"},
{"borderCallout2",
"adj1 18750;adj2 -8333;adj3 18750;adj4 -16667;adj5 112500;adj6 -46667",
"y1 */ h adj1 100000;x1 */ w adj2 100000;y2 */ h adj3 100000;x2 */ w adj4 100000;y3 */ h adj5 "
"100000;x3 */ w adj6 100000",
"l t r b",
"M l t L r t L r b L l b Z|fill=none M x1 y1 L x2 y2 L x3 y3"},
{"borderCallout3",
"adj1 18750;adj2 -8333;adj3 18750;adj4 -16667;adj5 100000;adj6 -16667;adj7 112963;adj8 -8333",
"y1 */ h adj1 100000;x1 */ w adj2 100000;y2 */ h adj3 100000;x2 */ w adj4 100000;y3 */ h adj5 "
"100000;x3 */ w adj6 100000;y4 */ h adj7 100000;x4 */ w adj8 100000",
"l t r b",
"M l t L r t L r b L l b Z|fill=none M x1 y1 L x2 y2 L x3 y3 L x4 y4"},
{"bracePair",
"adj 8333",
"a pin 0 adj 25000;x1 */ ss a 100000;x2 */ ss a 50000;x3 +- r 0 x2;x4 +- r 0 x1;y2 +- vc 0 x1;y3 +- "
"vc x1 0;y4 +- b 0 x1;it */ x1 29289 100000;il +- x1 it 0;ir +- r 0 il;ib +- b 0 it",
"il il ir ib",
"stroke=0 M x2 b A x1 x1 cd4 cd4 L x1 y3 A x1 x1 0 -5400000 A x1 x1 cd4 -5400000 L x1 x1 A x1 x1 cd2 "
"cd4 L x3 t A x1 x1 3cd4 cd4 L x4 y2 A x1 x1 cd2 -5400000 A x1 x1 3cd4 -5400000 L x4 y4 A x1 x1 0 cd4"
" Z|fill=none M x2 b A x1 x1 cd4 cd4 L x1 y3 A x1 x1 0 -5400000 A x1 x1 cd4 -5400000 L x1 x1 A x1 x1 "
"cd2 cd4 M x3 t A x1 x1 3cd4 cd4 L x4 y2 A x1 x1 cd2 -5400000 A x1 x1 3cd4 -5400000 L x4 y4 A x1 x1 0"
" cd4"},
{"bracketPair",
"adj 16667",
"a pin 0 adj 50000;x1 */ ss a 100000;x2 +- r 0 x1;y2 +- b 0 x1;il */ x1 29289 100000;ir +- r 0 il;ib "
"+- b 0 il",
"il il ir ib",
"stroke=0 M l x1 A x1 x1 cd2 cd4 L x2 t A x1 x1 3cd4 cd4 L r y2 A x1 x1 0 cd4 L x1 b A x1 x1 cd4 cd4 "
"Z|fill=none M x1 b A x1 x1 cd4 cd4 L l x1 A x1 x1 cd2 cd4 M x2 t A x1 x1 3cd4 cd4 L r y2 A x1 x1 0 "
"cd4"},
{"callout1",
"adj1 18750;adj2 -8333;adj3 112500;adj4 -38333",
"y1 */ h adj1 100000;x1 */ w adj2 100000;y2 */ h adj3 100000;x2 */ w adj4 100000",
"l t r b",
"stroke=0 M l t L r t L r b L l b Z|fill=none M x1 y1 L x2 y2"},
{"callout2",
"adj1 18750;adj2 -8333;adj3 18750;adj4 -16667;adj5 112500;adj6 -46667",
"y1 */ h adj1 100000;x1 */ w adj2 100000;y2 */ h adj3 100000;x2 */ w adj4 100000;y3 */ h adj5 "
"100000;x3 */ w adj6 100000",
"l t r b",
"stroke=0 M l t L r t L r b L l b Z|fill=none M x1 y1 L x2 y2 L x3 y3"},
{"callout3",
"adj1 18750;adj2 -8333;adj3 18750;adj4 -16667;adj5 100000;adj6 -16667;adj7 112963;adj8 -8333",
"y1 */ h adj1 100000;x1 */ w adj2 100000;y2 */ h adj3 100000;x2 */ w adj4 100000;y3 */ h adj5 "
"100000;x3 */ w adj6 100000;y4 */ h adj7 100000;x4 */ w adj8 100000",
"l t r b",
"stroke=0 M l t L r t L r b L l b Z|fill=none M x1 y1 L x2 y2 L x3 y3 L x4 y4"},
{"can",
"adj 25000",
"maxAdj */ 50000 h ss;a pin 0 adj maxAdj;y1 */ ss a 200000;y2 +- y1 y1 0;y3 +- b 0 y1",
"l y2 r y3",
"stroke=0 M l y1 A wd2 y1 cd2 -10800000 L r y3 A wd2 y1 0 cd2 Z|fill=lighten stroke=0 M l y1 A wd2 y1"
" cd2 cd2 A wd2 y1 0 cd2 Z|fill=none M r y1 A wd2 y1 0 cd2 A wd2 y1 cd2 cd2 L r y3 A wd2 y1 0 cd2 L l"
" y1"},
{"chartPlus",
"",
"",
"l t r b",
"w=10 h=10 fill=none M 5 0 L 5 10 M 0 5 L 10 5|w=10 h=10 stroke=0 M 0 0 L 0 10 L 10 10 L 10 0 Z"},
{"chartStar",
"",
"",
"l t r b",
"w=10 h=10 fill=none M 0 0 L 10 10 M 0 10 L 10 0 M 5 0 L 5 10|w=10 h=10 stroke=0 M 0 0 L 0 10 L 10 10"
" L 10 0 Z"},
{"chartX",
"",
"",
"l t r b",
"w=10 h=10 fill=none M 0 0 L 10 10 M 0 10 L 10 0|w=10 h=10 stroke=0 M 0 0 L 0 10 L 10 10 L 10 0 Z"},
{"chevron",
"adj 50000",
"maxAdj */ 100000 w ss;a pin 0 adj maxAdj;x1 */ ss a 100000;x2 +- r 0 x1;dx +- x2 0 x1;il ?: dx x1 "
"l;ir ?: dx x2 r",
"il t ir b",
"M l t L x2 t L r vc L x2 b L l b L x1 vc Z"},
{"chord",
"adj1 2700000;adj2 16200000",
"stAng pin 0 adj1 21599999;enAng pin 0 adj2 21599999;sw1 +- enAng 0 stAng;sw2 +- sw1 21600000 0;swAng"
" ?: sw1 sw1 sw2;wt1 sin wd2 stAng;ht1 cos hd2 stAng;dx1 cat2 wd2 ht1 wt1;dy1 sat2 hd2 ht1 wt1;x1 +- "
"hc dx1 0;y1 +- vc dy1 0;idx cos wd2 2700000;idy sin hd2 2700000;il +- hc 0 idx;ir +- hc idx 0;it +- "
"vc 0 idy;ib +- vc idy 0",
"il it ir ib",
"M x1 y1 A wd2 hd2 stAng swAng Z"},
{"circularArrow",
"adj1 12500;adj2 1142319;adj3 20457681;adj4 10800000;adj5 12500",
"a5 pin 0 adj5 25000;maxAdj1 */ a5 2 1;a1 pin 0 adj1 maxAdj1;enAng pin 1 adj3 21599999;stAng pin 0 "
"adj4 21599999;th */ ss a1 100000;thh */ ss a5 100000;th2 */ th 1 2;rw1 +- wd2 th2 thh;rh1 +- hd2 th2"
" thh;rw2 +- rw1 0 th;rh2 +- rh1 0 th;rw3 +- rw2 th2 0;rh3 +- rh2 th2 0;wtH sin rw3 enAng;htH cos rh3"
" enAng;dxH cat2 rw3 htH wtH;dyH sat2 rh3 htH wtH;xH +- hc dxH 0;yH +- vc dyH 0;rI min rw2 rh2;u1 */ "
"dxH dxH 1;u2 */ dyH dyH 1;u3 */ rI rI 1;u4 +- u1 0 u3;u5 +- u2 0 u3;u6 */ u4 u5 u1;u7 */ u6 1 u2;u8 "
"+- 1 0 u7;u9 sqrt u8;u10 */ u4 1 dxH;u11 */ u10 1 dyH;u12 +/ 1 u9 u11;u13 at2 1 u12;u14 +- u13 "
"21600000 0;u15 ?: u13 u13 u14;u16 +- u15 0 enAng;u17 +- u16 21600000 0;u18 ?: u16 u16 u17;u19 +- u18"
" 0 cd2;u20 +- u18 0 21600000;u21 ?: u19 u20 u18;maxAng abs u21;aAng pin 0 adj2 maxAng;ptAng +- enAng"
" aAng 0;wtA sin rw3 ptAng;htA cos rh3 ptAng;dxA cat2 rw3 htA wtA;dyA sat2 rh3 htA wtA;xA +- hc dxA "
"0;yA +- vc dyA 0;wtE sin rw1 stAng;htE cos rh1 stAng;dxE cat2 rw1 htE wtE;dyE sat2 rh1 htE wtE;xE +-"
" hc dxE 0;yE +- vc dyE 0;dxG cos thh ptAng;dyG sin thh ptAng;xG +- xH dxG 0;yG +- yH dyG 0;dxB cos "
"thh ptAng;dyB sin thh ptAng;xB +- xH 0 dxB 0;yB +- yH 0 dyB 0;sx1 +- xB 0 hc;sy1 +- yB 0 vc;sx2 +- "
"xG 0 hc;sy2 +- yG 0 vc;rO min rw1 rh1;x1O */ sx1 rO rw1;y1O */ sy1 rO rh1;x2O */ sx2 rO rw1;y2O */ "
"sy2 rO rh1;dxO +- x2O 0 x1O;dyO +- y2O 0 y1O;dO mod dxO dyO 0;q1 */ x1O y2O 1;q2 */ x2O y1O 1;DO +- "
"q1 0 q2;q3 */ rO rO 1;q4 */ dO dO 1;q5 */ q3 q4 1;q6 */ DO DO 1;q7 +- q5 0 q6;q8 max q7 0;sdelO sqrt"
" q8;ndyO */ dyO -1 1;sdyO ?: ndyO -1 1;q9 */ sdyO dxO 1;q10 */ q9 sdelO 1;q11 */ DO dyO 1;dxF1 +/ "
"q11 q10 q4;q12 +- q11 0 q10;dxF2 */ q12 1 q4;adyO abs dyO;q13 */ adyO sdelO 1;q14 */ DO dxO -1;dyF1 "
"+/ q14 q13 q4;q15 +- q14 0 q13;dyF2 */ q15 1 q4;q16 +- x2O 0 dxF1;q17 +- x2O 0 dxF2;q18 +- y2O 0 "
"dyF1;q19 +- y2O 0 dyF2;q20 mod q16 q18 0;q21 mod q17 q19 0;q22 +- q21 0 q20;dxF ?: q22 dxF1 dxF2;dyF"
" ?: q22 dyF1 dyF2;sdxF */ dxF rw1 rO;sdyF */ dyF rh1 rO;xF +- hc sdxF 0;yF +- vc sdyF 0;x1I */ sx1 "
"rI rw2;y1I */ sy1 rI rh2;x2I */ sx2 rI rw2;y2I */ sy2 rI rh2;dxI +- x2I 0 x1I;dyI +- y2I 0 y1I;dI "
"mod dxI dyI 0;v1 */ x1I y2I 1;v2 */ x2I y1I 1;DI +- v1 0 v2;v3 */ rI rI 1;v4 */ dI dI 1;v5 */ v3 v4 "
"1;v6 */ DI DI 1;v7 +- v5 0 v6;v8 max v7 0;sdelI sqrt v8;v9 */ sdyO dxI 1;v10 */ v9 sdelI 1;v11 */ DI"
" dyI 1;dxC1 +/ v11 v10 v4;v12 +- v11 0 v10;dxC2 */ v12 1 v4;adyI abs dyI;v13 */ adyI sdelI 1;v14 */ "
"DI dxI -1;dyC1 +/ v14 v13 v4;v15 +- v14 0 v13;dyC2 */ v15 1 v4;v16 +- x1I 0 dxC1;v17 +- x1I 0 "
"dxC2;v18 +- y1I 0 dyC1;v19 +- y1I 0 dyC2;v20 mod v16 v18 0;v21 mod v17 v19 0;v22 +- v21 0 v20;dxC ?:"
" v22 dxC1 dxC2;dyC ?: v22 dyC1 dyC2;sdxC */ dxC rw2 rI;sdyC */ dyC rh2 rI;xC +- hc sdxC 0;yC +- vc "
"sdyC 0;ist0 at2 sdxC sdyC;ist1 +- ist0 21600000 0;istAng ?: ist0 ist0 ist1;isw1 +- stAng 0 "
"istAng;isw2 +- isw1 0 21600000;iswAng ?: isw1 isw2 isw1;p1 +- xF 0 xC;p2 +- yF 0 yC;p3 mod p1 p2 "
"0;p4 */ p3 1 2;p5 +- p4 0 thh;xGp ?: p5 xF xG;yGp ?: p5 yF yG;xBp ?: p5 xC xB;yBp ?: p5 yC yB;en0 "
"at2 sdxF sdyF;en1 +- en0 21600000 0;en2 ?: en0 en0 en1;sw0 +- en2 0 stAng;sw1 +- sw0 21600000 "
"0;swAng ?: sw0 sw0 sw1;idx cos rw1 2700000;idy sin rh1 2700000;il +- hc 0 idx;ir +- hc idx 0;it +- "
"vc 0 idy;ib +- vc idy 0",
"il it ir ib",
"M xE yE A rw1 rh1 stAng swAng L xGp yGp L xA yA L xBp yBp L xC yC A rw2 rh2 istAng iswAng Z"},
{"cloud",
"",
"il */ w 2977 21600;it */ h 3262 21600;ir */ w 17087 21600;ib */ h 17337 21600",
"il it ir ib",
"w=43200 h=43200 M 3900 14370 A 6753 9190 -11429249 7426832 A 5333 7267 -8646143 5396714 A 4365 5945 "
"-8748475 5983381 A 4857 6595 -7859164 7034504 A 5333 7273 -4722533 6541615 A 6775 9220 -2776035 "
"7816140 A 5785 7867 37501 6842000 A 6752 9215 1347096 6910353 A 7720 10543 3974558 4542661 A 4360 "
"5918 -16496525 8804134 A 4345 5945 -14809710 9151131 Z|w=43200 h=43200 fill=none M 4693 26177 A 4345"
" 5945 5204520 1585770 M 6928 34899 A 4360 5918 4416628 686848 M 16478 39090 A 6752 9215 8257449 "
"844866 M 28827 34751 A 6752 9215 387196 959901 M 34129 22954 A 5785 7867 -4217541 4255042 M 41798 "
"15354 A 5333 7273 1819082 1665090 M 38324 5426 A 4857 6595 -824660 891534 M 29078 3952 A 4857 6595 "
"-8950887 1091722 M 22141 4720 A 4365 5945 -9809656 1061181 M 14000 5192 A 6753 9190 -4002417 739161 "
"M 4127 15789 A 6753 9190 9459261 711490"},
{"cloudCallout",
"adj1 -20833;adj2 62500",
"dxPos */ w adj1 100000;dyPos */ h adj2 100000;xPos +- hc dxPos 0;yPos +- vc dyPos 0;ht cat2 hd2 "
"dxPos dyPos;wt sat2 wd2 dxPos dyPos;g2 cat2 wd2 ht wt;g3 sat2 hd2 ht wt;g4 +- hc g2 0;g5 +- vc g3 "
"0;g6 +- g4 0 xPos;g7 +- g5 0 yPos;g8 mod g6 g7 0;g9 */ ss 6600 21600;g10 +- g8 0 g9;g11 */ g10 1 "
"3;g12 */ ss 1800 21600;g13 +- g11 g12 0;g14 */ g13 g6 g8;g15 */ g13 g7 g8;g16 +- g14 xPos 0;g17 +- "
"g15 yPos 0;g18 */ ss 4800 21600;g19 */ g11 2 1;g20 +- g18 g19 0;g21 */ g20 g6 g8;g22 */ g20 g7 "
"g8;g23 +- g21 xPos 0;g24 +- g22 yPos 0;g25 */ ss 1200 21600;g26 */ ss 600 21600;x23 +- xPos g26 "
"0;x24 +- g16 g25 0;x25 +- g23 g12 0;il */ w 2977 21600;it */ h 3262 21600;ir */ w 17087 21600;ib */ "
"h 17337 21600",
"il it ir ib",
"w=43200 h=43200 M 3900 14370 A 6753 9190 -11429249 7426832 A 5333 7267 -8646143 5396714 A 4365 5945 "
"-8748475 5983381 A 4857 6595 -7859164 7034504 A 5333 7273 -4722533 6541615 A 6775 9220 -2776035 "
"7816140 A 5785 7867 37501 6842000 A 6752 9215 1347096 6910353 A 7720 10543 3974558 4542661 A 4360 "
"5918 -16496525 8804134 A 4345 5945 -14809710 9151131 Z|M x23 yPos A g26 g26 0 21600000 Z|M x24 g17 A"
" g25 g25 0 21600000 Z|M x25 g24 A g12 g12 0 21600000 Z|w=43200 h=43200 fill=none M 4693 26177 A 4345"
" 5945 5204520 1585770 M 6928 34899 A 4360 5918 4416628 686848 M 16478 39090 A 6752 9215 8257449 "
"844866 M 28827 34751 A 6752 9215 387196 959901 M 34129 22954 A 5785 7867 -4217541 4255042 M 41798 "
"15354 A 5333 7273 1819082 1665090 M 38324 5426 A 4857 6595 -824660 891534 M 29078 3952 A 4857 6595 "
"-8950887 1091722 M 22141 4720 A 4365 5945 -9809656 1061181 M 14000 5192 A 6753 9190 -4002417 739161 "
"M 4127 15789 A 6753 9190 9459261 711490"},
{"corner",
"adj1 50000;adj2 50000",
"maxAdj1 */ 100000 h ss;maxAdj2 */ 100000 w ss;a1 pin 0 adj1 maxAdj1;a2 pin 0 adj2 maxAdj2;x1 */ ss "
"a2 100000;dy1 */ ss a1 100000;y1 +- b 0 dy1;d +- w 0 h;it ?: d y1 t;ir ?: d r x1",
"l it ir b",
"M l t L x1 t L x1 y1 L r y1 L r b L l b Z"},
{"cornerTabs",
"",
"md mod w h 0;dx */ 1 md 20;y1 +- 0 b dx;x1 +- 0 r dx",
"dx dx x1 y1",
"M l t L dx t L l dx Z|M l y1 L dx b L l b Z|M x1 t L r t L r dx Z|M r y1 L r b L x1 b Z"},
{"cube",
"adj 25000",
"a pin 0 adj 100000;y1 */ ss a 100000;y4 +- b 0 y1;x4 +- r 0 y1",
"l y1 x4 b",
"stroke=0 M l y1 L x4 y1 L x4 b L l b Z|fill=darkenLess stroke=0 M x4 y1 L r t L r y4 L x4 b "
"Z|fill=lightenLess stroke=0 M l y1 L y1 t L r t L x4 y1 Z|fill=none M l y1 L y1 t L r t L r y4 L x4 "
"b L l b Z M l y1 L x4 y1 L r t M x4 y1 L x4 b"},
{"curvedConnector2",
"",
"",
"l t r b",
"fill=none M l t C wd2 t r hd2 r b"},
{"curvedConnector3",
"adj1 50000",
"x2 */ w adj1 100000;x1 +/ l x2 2;x3 +/ r x2 2;y3 */ h 3 4",
"l t r b",
"fill=none M l t C x1 t x2 hd4 x2 vc C x2 y3 x3 b r b"},
{"curvedConnector4",
"adj1 50000;adj2 50000",
"x2 */ w adj1 100000;x1 +/ l x2 2;x3 +/ r x2 2;x4 +/ x2 x3 2;x5 +/ x3 r 2;y4 */ h adj2 100000;y1 +/ t"
" y4 2;y2 +/ t y1 2;y3 +/ y1 y4 2;y5 +/ b y4 2",
"l t r b",
"fill=none M l t C x1 t x2 y2 x2 y1 C x2 y3 x4 y4 x3 y4 C x5 y4 r y5 r b"},
{"curvedConnector5",
"adj1 50000;adj2 50000;adj3 50000",
"x3 */ w adj1 100000;x6 */ w adj3 100000;x1 +/ x3 x6 2;x2 +/ l x3 2;x4 +/ x3 x1 2;x5 +/ x6 x1 2;x7 +/"
" x6 r 2;y4 */ h adj2 100000;y1 +/ t y4 2;y2 +/ t y1 2;y3 +/ y1 y4 2;y5 +/ b y4 2;y6 +/ y5 y4 2;y7 +/"
" y5 b 2",
"l t r b",
"fill=none M l t C x2 t x3 y2 x3 y1 C x3 y3 x4 y4 x1 y4 C x5 y4 x6 y6 x6 y5 C x6 y7 x7 b r b"},
{"curvedDownArrow",
"adj1 25000;adj2 50000;adj3 25000",
"maxAdj2 */ 50000 w ss;a2 pin 0 adj2 maxAdj2;a1 pin 0 adj1 100000;th */ ss a1 100000;aw */ ss a2 "
"100000;q1 +/ th aw 4;wR +- wd2 0 q1;q7 */ wR 2 1;q8 */ q7 q7 1;q9 */ th th 1;q10 +- q8 0 q9;q11 sqrt"
" q10;idy */ q11 h q7;ah */ ss adj3 100000;x3 +- wR th 0;q2 */ h h 1;q3 */ ah ah 1;q4 +- q2 0 q3;q5 "
"sqrt q4;dx */ q5 wR h;x5 +- wR dx 0;x7 +- x3 dx 0;q6 +- aw 0 th;dh */ q6 1 2;x4 +- x5 0 dh;x8 +- x7 "
"dh 0;aw2 */ aw 1 2;x6 +- r 0 aw2;y1 +- b 0 ah;swAng at2 ah dx;mswAng +- 0 0 swAng;iy +- b 0 idy;ix "
"+/ wR x3 2;q12 */ th 1 2;dang2 at2 idy q12;stAng +- 3cd4 swAng 0;stAng2 +- 3cd4 0 dang2;swAng2 +- "
"dang2 0 cd4;swAng3 +- cd4 dang2 0",
"l t r b",
"stroke=0 M x6 b L x4 y1 L x5 y1 A wR h stAng mswAng L x3 t A wR h 3cd4 swAng L x8 y1 "
"Z|fill=darkenLess stroke=0 M ix iy A wR h stAng2 swAng2 L l b A wR h cd2 swAng3 Z|fill=none M ix iy "
"A wR h stAng2 swAng2 L l b A wR h cd2 cd4 L x3 t A wR h 3cd4 swAng L x8 y1 L x6 b L x4 y1 L x5 y1 A "
"wR h stAng mswAng"},
{"curvedLeftArrow",
"adj1 25000;adj2 50000;adj3 25000",
"maxAdj2 */ 50000 h ss;a2 pin 0 adj2 maxAdj2;a1 pin 0 adj1 a2;th */ ss a1 100000;aw */ ss a2 "
"100000;q1 +/ th aw 4;hR +- hd2 0 q1;q7 */ hR 2 1;q8 */ q7 q7 1;q9 */ th th 1;q10 +- q8 0 q9;q11 sqrt"
" q10;idx */ q11 w q7;maxAdj3 */ 100000 idx ss;a3 pin 0 adj3 maxAdj3;ah */ ss a3 100000;y3 +- hR th "
"0;q2 */ w w 1;q3 */ ah ah 1;q4 +- q2 0 q3;q5 sqrt q4;dy */ q5 hR w;y5 +- hR dy 0;y7 +- y3 dy 0;q6 +-"
" aw 0 th;dh */ q6 1 2;y4 +- y5 0 dh;y8 +- y7 dh 0;aw2 */ aw 1 2;y6 +- b 0 aw2;x1 +- l ah 0;swAng at2"
" ah dy;q12 */ th 1 2;dang2 at2 idx q12;swAng2 +- dang2 0 swAng;swAng3 +- swAng dang2 0;stAng3 +- 0 0"
" dang2",
"l t r b",
"stroke=0 M l y6 L x1 y4 L x1 y5 A w hR swAng swAng2 A w hR stAng3 swAng3 L x1 y8 Z|fill=darkenLess "
"stroke=0 M r y3 A w hR 0 -5400000 L l t A w hR 3cd4 cd4 Z|fill=none M r y3 A w hR 0 -5400000 L l t A"
" w hR 3cd4 cd4 L r y3 A w hR 0 swAng L x1 y8 L l y6 L x1 y4 L x1 y5 A w hR swAng swAng2"},
{"curvedRightArrow",
"adj1 25000;adj2 50000;adj3 25000",
"maxAdj2 */ 50000 h ss;a2 pin 0 adj2 maxAdj2;a1 pin 0 adj1 a2;th */ ss a1 100000;aw */ ss a2 "
"100000;q1 +/ th aw 4;hR +- hd2 0 q1;q7 */ hR 2 1;q8 */ q7 q7 1;q9 */ th th 1;q10 +- q8 0 q9;q11 sqrt"
" q10;idx */ q11 w q7;maxAdj3 */ 100000 idx ss;a3 pin 0 adj3 maxAdj3;ah */ ss a3 100000;y3 +- hR th "
"0;q2 */ w w 1;q3 */ ah ah 1;q4 +- q2 0 q3;q5 sqrt q4;dy */ q5 hR w;y5 +- hR dy 0;y7 +- y3 dy 0;q6 +-"
" aw 0 th;dh */ q6 1 2;y4 +- y5 0 dh;y8 +- y7 dh 0;aw2 */ aw 1 2;y6 +- b 0 aw2;x1 +- r 0 ah;swAng at2"
" ah dy;stAng +- cd2 0 swAng;mswAng +- 0 0 swAng;q12 */ th 1 2;dang2 at2 idx q12;swAng2 +- dang2 0 "
"cd4;swAng3 +- cd4 dang2 0;stAng3 +- cd2 0 dang2",
"l t r b",
"stroke=0 M l hR A w hR cd2 mswAng L x1 y4 L r y6 L x1 y8 L x1 y7 A w hR stAng swAng "
"Z|fill=darkenLess stroke=0 M r th A w hR 3cd4 swAng2 A w hR stAng3 swAng3 Z|fill=none M l hR A w hR "
"cd2 mswAng L x1 y4 L r y6 L x1 y8 L x1 y7 A w hR stAng swAng L l hR A w hR cd2 cd4 L r th A w hR "
"3cd4 swAng2"},
{"curvedUpArrow",
"adj1 25000;adj2 50000;adj3 25000",
"maxAdj2 */ 50000 w ss;a2 pin 0 adj2 maxAdj2;a1 pin 0 adj1 100000;th */ ss a1 100000;aw */ ss a2 "
"100000;q1 +/ th aw 4;wR +- wd2 0 q1;q7 */ wR 2 1;q8 */ q7 q7 1;q9 */ th th 1;q10 +- q8 0 q9;q11 sqrt"
" q10;idy */ q11 h q7;ah */ ss adj3 100000;x3 +- wR th 0;q2 */ h h 1;q3 */ ah ah 1;q4 +- q2 0 q3;q5 "
"sqrt q4;dx */ q5 wR h;x5 +- wR dx 0;x7 +- x3 dx 0;q6 +- aw 0 th;dh */ q6 1 2;x4 +- x5 0 dh;x8 +- x7 "
"dh 0;aw2 */ aw 1 2;x6 +- r 0 aw2;y1 +- t ah 0;swAng at2 ah dx;iy +- t idy 0;ix +/ wR x3 2;q12 */ th "
"1 2;dang2 at2 idy q12;swAng2 +- dang2 0 swAng;stAng3 +- cd4 0 swAng;swAng3 +- swAng dang2 0;stAng2 "
"+- cd4 0 dang2",
"l t r b",
"stroke=0 M x6 t L x8 y1 L x7 y1 A wR h stAng3 swAng3 A wR h stAng2 swAng2 L x4 y1 Z|fill=darkenLess "
"stroke=0 M wR b A wR h cd4 cd4 L th t A wR h cd2 -5400000 Z|fill=none M ix iy A wR h stAng2 swAng2 L"
" x4 y1 L x6 t L x8 y1 L x7 y1 A wR h stAng3 swAng L wR b A wR h cd4 cd4 L th t A wR h cd2 -5400000"},
{"decagon",
"vf 105146",
"shd2 */ hd2 vf 100000;dx1 cos wd2 2160000;dx2 cos wd2 4320000;x1 +- hc 0 dx1;x2 +- hc 0 dx2;x3 +- hc"
" dx2 0;x4 +- hc dx1 0;dy1 sin shd2 4320000;dy2 sin shd2 2160000;y1 +- vc 0 dy1;y2 +- vc 0 dy2;y3 +- "
"vc dy2 0;y4 +- vc dy1 0",
"x1 y2 x4 y3",
"M l vc L x1 y2 L x2 y1 L x3 y1 L x4 y2 L r vc L x4 y3 L x3 y4 L x2 y4 L x1 y3 Z"},
{"diagStripe",
"adj 50000",
"a pin 0 adj 100000;x2 */ w a 100000;x3 +/ x2 r 2;y2 */ h a 100000;y3 +/ y2 b 2",
"l t x3 y3",
"M l y2 L x2 t L r t L l b Z"},
{"diamond",
"",
"ir */ w 3 4;ib */ h 3 4",
"wd4 hd4 ir ib",
"M l vc L hc t L r vc L hc b Z"},
{"dodecagon",
"",
"x1 */ w 2894 21600;x2 */ w 7906 21600;x3 */ w 13694 21600;x4 */ w 18706 21600;y1 */ h 2894 21600;y2 "
"*/ h 7906 21600;y3 */ h 13694 21600;y4 */ h 18706 21600",
"x1 y1 x4 y4",
"M l y2 L x1 y1 L x2 t L x3 t L x4 y1 L r y2 L r y3 L x4 y4 L x3 b L x2 b L x1 y4 L l y3 Z"},
{"donut",
"adj 25000",
"a pin 0 adj 50000;dr */ ss a 100000;iwd2 +- wd2 0 dr;ihd2 +- hd2 0 dr;idx cos wd2 2700000;idy sin "
"hd2 2700000;il +- hc 0 idx;ir +- hc idx 0;it +- vc 0 idy;ib +- vc idy 0",
"il it ir ib",
"M l vc A wd2 hd2 cd2 cd4 A wd2 hd2 3cd4 cd4 A wd2 hd2 0 cd4 A wd2 hd2 cd4 cd4 Z M dr vc A iwd2 ihd2 "
"cd2 -5400000 A iwd2 ihd2 cd4 -5400000 A iwd2 ihd2 0 -5400000 A iwd2 ihd2 3cd4 -5400000 Z"},
{"doubleWave",
"adj1 6250;adj2 0",
"a1 pin 0 adj1 12500;a2 pin -10000 adj2 10000;y1 */ h a1 100000;dy2 */ y1 10 3;y2 +- y1 0 dy2;y3 +- "
"y1 dy2 0;y4 +- b 0 y1;y5 +- y4 0 dy2;y6 +- y4 dy2 0;of2 */ w a2 50000;dx2 ?: of2 0 of2;x2 +- l 0 "
"dx2;dx8 ?: of2 of2 0;x8 +- r 0 dx8;dx3 +/ dx2 x8 6;x3 +- x2 dx3 0;dx4 +/ dx2 x8 3;x4 +- x2 dx4 0;x5 "
"+/ x2 x8 2;x6 +- x5 dx3 0;x7 +/ x6 x8 2;x9 +- l dx8 0;x15 +- r dx2 0;x10 +- x9 dx3 0;x11 +- x9 dx4 "
"0;x12 +/ x9 x15 2;x13 +- x12 dx3 0;x14 +/ x13 x15 2;il max x2 x9;ir min x8 x15;it */ h a1 50000;ib "
"+- b 0 it",
"il it ir ib",
"M x2 y1 C x3 y2 x4 y3 x5 y1 C x6 y2 x7 y3 x8 y1 L x15 y4 C x14 y6 x13 y5 x12 y4 C x11 y6 x10 y5 x9 "
"y4 Z"},
{"downArrow",
"adj1 50000;adj2 50000",
"maxAdj2 */ 100000 h ss;a1 pin 0 adj1 100000;a2 pin 0 adj2 maxAdj2;dy1 */ ss a2 100000;y1 +- b 0 "
"dy1;dx1 */ w a1 200000;x1 +- hc 0 dx1;x2 +- hc dx1 0;dy2 */ x1 dy1 wd2;y2 +- y1 dy2 0",
"x1 t x2 y2",
"M l y1 L x1 y1 L x1 t L x2 t L x2 y1 L r y1 L hc b Z"},
{"downArrowCallout",
"adj1 25000;adj2 25000;adj3 25000;adj4 64977",
"maxAdj2 */ 50000 w ss;a2 pin 0 adj2 maxAdj2;maxAdj1 */ a2 2 1;a1 pin 0 adj1 maxAdj1;maxAdj3 */ "
"100000 h ss;a3 pin 0 adj3 maxAdj3;q2 */ a3 ss h;maxAdj4 +- 100000 0 q2;a4 pin 0 adj4 maxAdj4;dx1 */ "
"ss a2 100000;dx2 */ ss a1 200000;x1 +- hc 0 dx1;x2 +- hc 0 dx2;x3 +- hc dx2 0;x4 +- hc dx1 0;dy3 */ "
"ss a3 100000;y3 +- b 0 dy3;y2 */ h a4 100000",
"l t r y2",
"M l t L r t L r y2 L x3 y2 L x3 y3 L x4 y3 L hc b L x1 y3 L x2 y3 L x2 y2 L l y2 Z"},
{"ellipse",
"",
"idx cos wd2 2700000;idy sin hd2 2700000;il +- hc 0 idx;ir +- hc idx 0;it +- vc 0 idy;ib +- vc idy 0",
"il it ir ib",
"M l vc A wd2 hd2 cd2 cd4 A wd2 hd2 3cd4 cd4 A wd2 hd2 0 cd4 A wd2 hd2 cd4 cd4 Z"},
{"ellipseRibbon",
"adj1 25000;adj2 50000;adj3 12500",
"a1 pin 0 adj1 100000;a2 pin 25000 adj2 75000;q10 +- 100000 0 a1;q11 */ q10 1 2;q12 +- a1 0 "
"q11;minAdj3 max 0 q12;a3 pin minAdj3 adj3 a1;dx2 */ w a2 200000;x2 +- hc 0 dx2;x3 +- x2 wd8 0;x4 +- "
"r 0 x3;x5 +- r 0 x2;x6 +- r 0 wd8;dy1 */ h a3 100000;f1 */ 4 dy1 w;q1 */ x3 x3 w;q2 +- x3 0 q1;y1 */"
" f1 q2 1;cx1 */ x3 1 2;cy1 */ f1 cx1 1;cx2 +- r 0 cx1;q1 */ h a1 100000;dy3 +- q1 0 dy1;q3 */ x2 x2 "
"w;q4 +- x2 0 q3;q5 */ f1 q4 1;y3 +- q5 dy3 0;q6 +- dy1 dy3 y3;q7 +- q6 dy1 0;cy3 +- q7 dy3 0;rh +- b"
" 0 q1;q8 */ dy1 14 16;y2 +/ q8 rh 2;y5 +- q5 rh 0;y6 +- y3 rh 0;cx4 */ x2 1 2;q9 */ f1 cx4 1;cy4 +- "
"q9 rh 0;cx5 +- r 0 cx4;cy6 +- cy3 rh 0;y7 +- y1 dy3 0;cy7 +- q1 q1 y7",
"x2 q1 x5 y6",
"stroke=0 M l t Q cx1 cy1 x3 y1 L x2 y3 Q hc cy3 x5 y3 L x4 y1 Q cx2 cy1 r t L x6 y2 L r rh Q cx5 cy4"
" x5 y5 L x5 y6 Q hc cy6 x2 y6 L x2 y5 Q cx4 cy4 l rh L wd8 y2 Z|fill=darkenLess stroke=0 M x3 y7 L "
"x3 y1 L x2 y3 Q hc cy3 x5 y3 L x4 y1 L x4 y7 Q hc cy7 x3 y7 Z|fill=none M l t Q cx1 cy1 x3 y1 L x2 "
"y3 Q hc cy3 x5 y3 L x4 y1 Q cx2 cy1 r t L x6 y2 L r rh Q cx5 cy4 x5 y5 L x5 y6 Q hc cy6 x2 y6 L x2 "
"y5 Q cx4 cy4 l rh L wd8 y2 Z M x2 y5 L x2 y3 M x5 y3 L x5 y5 M x3 y1 L x3 y7 M x4 y7 L x4 y1"},
{"ellipseRibbon2",
"adj1 25000;adj2 50000;adj3 12500",
"a1 pin 0 adj1 100000;a2 pin 25000 adj2 75000;q10 +- 100000 0 a1;q11 */ q10 1 2;q12 +- a1 0 "
"q11;minAdj3 max 0 q12;a3 pin minAdj3 adj3 a1;dx2 */ w a2 200000;x2 +- hc 0 dx2;x3 +- x2 wd8 0;x4 +- "
"r 0 x3;x5 +- r 0 x2;x6 +- r 0 wd8;dy1 */ h a3 100000;f1 */ 4 dy1 w;q1 */ x3 x3 w;q2 +- x3 0 q1;u1 */"
" f1 q2 1;y1 +- b 0 u1;cx1 */ x3 1 2;cu1 */ f1 cx1 1;cy1 +- b 0 cu1;cx2 +- r 0 cx1;q1 */ h a1 "
"100000;dy3 +- q1 0 dy1;q3 */ x2 x2 w;q4 +- x2 0 q3;q5 */ f1 q4 1;u3 +- q5 dy3 0;y3 +- b 0 u3;q6 +- "
"dy1 dy3 u3;q7 +- q6 dy1 0;cu3 +- q7 dy3 0;cy3 +- b 0 cu3;rh +- b 0 q1;q8 */ dy1 14 16;u2 +/ q8 rh "
"2;y2 +- b 0 u2;u5 +- q5 rh 0;y5 +- b 0 u5;u6 +- u3 rh 0;y6 +- b 0 u6;cx4 */ x2 1 2;q9 */ f1 cx4 "
"1;cu4 +- q9 rh 0;cy4 +- b 0 cu4;cx5 +- r 0 cx4;cu6 +- cu3 rh 0;cy6 +- b 0 cu6;u7 +- u1 dy3 0;y7 +- b"
" 0 u7;cu7 +- q1 q1 u7;cy7 +- b 0 cu7",
"x2 y6 x5 rh",
"stroke=0 M l b Q cx1 cy1 x3 y1 L x2 y3 Q hc cy3 x5 y3 L x4 y1 Q cx2 cy1 r b L x6 y2 L r q1 Q cx5 cy4"
" x5 y5 L x5 y6 Q hc cy6 x2 y6 L x2 y5 Q cx4 cy4 l q1 L wd8 y2 Z|fill=darkenLess stroke=0 M x3 y7 L "
"x3 y1 L x2 y3 Q hc cy3 x5 y3 L x4 y1 L x4 y7 Q hc cy7 x3 y7 Z|fill=none M l b L wd8 y2 L l q1 Q cx4 "
"cy4 x2 y5 L x2 y6 Q hc cy6 x5 y6 L x5 y5 Q cx5 cy4 r q1 L x6 y2 L r b Q cx2 cy1 x4 y1 L x5 y3 Q hc "
"cy3 x2 y3 L x3 y1 Q cx1 cy1 l b Z M x2 y3 L x2 y5 M x5 y5 L x5 y3 M x3 y7 L x3 y1 M x4 y1 L x4 y7"},
{"flowChartAlternateProcess",
"",
"x2 +- r 0 ssd6;y2 +- b 0 ssd6;il */ ssd6 29289 100000;ir +- r 0 il;ib +- b 0 il",
"il il ir ib",
"M l ssd6 A ssd6 ssd6 cd2 cd4 L x2 t A ssd6 ssd6 3cd4 cd4 L r y2 A ssd6 ssd6 0 cd4 L ssd6 b A ssd6 "
"ssd6 cd4 cd4 Z"},
{"flowChartCollate",
"",
"ir */ w 3 4;ib */ h 3 4",
"wd4 hd4 ir ib",
"w=2 h=2 M 0 0 L 2 0 L 1 1 L 2 2 L 0 2 L 1 1 Z"},
{"flowChartConnector",
"",
"idx cos wd2 2700000;idy sin hd2 2700000;il +- hc 0 idx;ir +- hc idx 0;it +- vc 0 idy;ib +- vc idy 0",
"il it ir ib",
"M l vc A wd2 hd2 cd2 cd4 A wd2 hd2 3cd4 cd4 A wd2 hd2 0 cd4 A wd2 hd2 cd4 cd4 Z"},
{"flowChartDecision",
"",
"ir */ w 3 4;ib */ h 3 4",
"wd4 hd4 ir ib",
"w=2 h=2 M 0 1 L 1 0 L 2 1 L 1 2 Z"},
{"flowChartDelay",
"",
"idx cos wd2 2700000;idy sin hd2 2700000;ir +- hc idx 0;it +- vc 0 idy;ib +- vc idy 0",
"l it ir ib",
"M l t L hc t A wd2 hd2 3cd4 cd2 L l b Z"},
{"flowChartDisplay",
"",
"x2 */ w 5 6",
"wd6 t x2 b",
"w=6 h=6 M 0 3 L 1 0 L 5 0 A 1 3 3cd4 cd2 L 1 6 Z"},
{"flowChartDocument",
"",
"y1 */ h 17322 21600",
"l t r y1",
"w=21600 h=21600 M 0 0 L 21600 0 L 21600 17322 C 10800 17322 10800 23922 0 20172 Z"},
{"flowChartExtract",
"",
"x2 */ w 3 4",
"wd4 vc x2 b",
"w=2 h=2 M 0 2 L 1 0 L 2 2 Z"},
{"flowChartInputOutput",
"",
"x5 */ w 4 5",
"wd5 t x5 b",
"w=5 h=5 M 0 5 L 1 0 L 5 0 L 4 5 Z"},
{"flowChartInternalStorage",
"",
"",
"wd8 hd8 r b",
"w=1 h=1 stroke=0 M 0 0 L 1 0 L 1 1 L 0 1 Z|w=8 h=8 fill=none M 1 0 L 1 8 M 0 1 L 8 1|w=1 h=1 "
"fill=none M 0 0 L 1 0 L 1 1 L 0 1 Z"},
{"flowChartMagneticDisk",
"",
"y3 */ h 5 6",
"l hd3 r y3",
"w=6 h=6 stroke=0 M 0 1 A 3 1 cd2 cd2 L 6 5 A 3 1 0 cd2 Z|w=6 h=6 fill=none M 6 1 A 3 1 0 cd2|w=6 h=6"
" fill=none M 0 1 A 3 1 cd2 cd2 L 6 5 A 3 1 0 cd2 Z"},
{"flowChartMagneticDrum",
"",
"x2 */ w 2 3",
"wd6 t x2 b",
"w=6 h=6 stroke=0 M 1 0 L 5 0 A 1 3 3cd4 cd2 L 1 6 A 1 3 cd4 cd2 Z|w=6 h=6 fill=none M 5 6 A 1 3 cd4 "
"cd2|w=6 h=6 fill=none M 1 0 L 5 0 A 1 3 3cd4 cd2 L 1 6 A 1 3 cd4 cd2 Z"},
{"flowChartMagneticTape",
"",
"idx cos wd2 2700000;idy sin hd2 2700000;il +- hc 0 idx;ir +- hc idx 0;it +- vc 0 idy;ib +- vc idy "
"0;ang1 at2 w h",
"il it ir ib",
"M hc b A wd2 hd2 cd4 cd4 A wd2 hd2 cd2 cd4 A wd2 hd2 3cd4 cd4 A wd2 hd2 0 ang1 L r ib L r b Z"},
{"flowChartManualInput",
"",
"",
"l hd5 r b",
"w=5 h=5 M 0 1 L 5 0 L 5 5 L 0 5 Z"},
{"flowChartManualOperation",
"",
"x3 */ w 4 5",
"wd5 t x3 b",
"w=5 h=5 M 0 0 L 5 0 L 4 5 L 1 5 Z"},
{"flowChartMerge",
"",
"x2 */ w 3 4",
"wd4 t x2 vc",
"w=2 h=2 M 0 0 L 2 0 L 1 2 Z"},
{"flowChartMultidocument",
"",
"y2 */ h 3675 21600;y8 */ h 20782 21600;x5 */ w 18595 21600",
"l y2 x5 y8",
"w=21600 h=21600 stroke=0 M 0 20782 C 9298 23542 9298 18022 18595 18022 L 18595 3675 L 0 3675 Z M "
"1532 3675 L 1532 1815 L 20000 1815 L 20000 16252 C 19298 16252 18595 16352 18595 16352 L 18595 3675 "
"Z M 2972 1815 L 2972 0 L 21600 0 L 21600 14392 C 20800 14392 20000 14467 20000 14467 L 20000 1815 "
"Z|w=21600 h=21600 fill=none M 0 3675 L 18595 3675 L 18595 18022 C 9298 18022 9298 23542 0 20782 Z M "
"1532 3675 L 1532 1815 L 20000 1815 L 20000 16252 C 19298 16252 18595 16352 18595 16352 M 2972 1815 L"
" 2972 0 L 21600 0 L 21600 14392 C 20800 14392 20000 14467 20000 14467|w=21600 h=21600 fill=none "
"stroke=0 M 0 20782 C 9298 23542 9298 18022 18595 18022 L 18595 16352 C 18595 16352 19298 16252 20000"
" 16252 L 20000 14467 C 20000 14467 20800 14392 21600 14392 L 21600 0 L 2972 0 L 2972 1815 L 1532 "
"1815 L 1532 3675 L 0 3675 Z"},
{"flowChartOfflineStorage",
"",
"x4 */ w 3 4",
"wd4 t x4 vc",
"w=2 h=2 stroke=0 M 0 0 L 2 0 L 1 2 Z|w=5 h=5 fill=none M 2 4 L 3 4|w=2 h=2 fill=none M 0 0 L 2 0 L 1"
" 2 Z"},
{"flowChartOffpageConnector",
"",
"y1 */ h 4 5",
"l t r y1",
"w=10 h=10 M 0 0 L 10 0 L 10 8 L 5 10 L 0 8 Z"},
{"flowChartOnlineStorage",
"",
"x2 */ w 5 6",
"wd6 t x2 b",
"w=6 h=6 M 1 0 L 6 0 A 1 3 3cd4 -10800000 L 1 6 A 1 3 cd4 cd2 Z"},
{"flowChartOr",
"",
"idx cos wd2 2700000;idy sin hd2 2700000;il +- hc 0 idx;ir +- hc idx 0;it +- vc 0 idy;ib +- vc idy 0",
"il it ir ib",
"stroke=0 M l vc A wd2 hd2 cd2 cd4 A wd2 hd2 3cd4 cd4 A wd2 hd2 0 cd4 A wd2 hd2 cd4 cd4 Z|fill=none M"
" hc t L hc b M l vc L r vc|fill=none M l vc A wd2 hd2 cd2 cd4 A wd2 hd2 3cd4 cd4 A wd2 hd2 0 cd4 A "
"wd2 hd2 cd4 cd4 Z"},
{"flowChartPredefinedProcess",
"",
"x2 */ w 7 8",
"wd8 t x2 b",
"w=1 h=1 stroke=0 M 0 0 L 1 0 L 1 1 L 0 1 Z|w=8 h=8 fill=none M 1 0 L 1 8 M 7 0 L 7 8|w=1 h=1 "
"fill=none M 0 0 L 1 0 L 1 1 L 0 1 Z"},
{"flowChartPreparation",
"",
"x2 */ w 4 5",
"wd5 t x2 b",
"w=10 h=10 M 0 5 L 2 0 L 8 0 L 10 5 L 8 10 L 2 10 Z"},
{"flowChartProcess",
"",
"",
"l t r b",
"w=1 h=1 M 0 0 L 1 0 L 1 1 L 0 1 Z"},
{"flowChartPunchedCard",
"",
"",
"l hd5 r b",
"w=5 h=5 M 0 1 L 1 0 L 5 0 L 5 5 L 0 5 Z"},
{"flowChartPunchedTape",
"",
"ib */ h 4 5",
"l hd5 r ib",
"w=20 h=20 M 0 2 A 5 2 cd2 -10800000 A 5 2 cd2 cd2 L 20 18 A 5 2 0 -10800000 A 5 2 0 cd2 Z"},
{"flowChartSort",
"",
"ir */ w 3 4;ib */ h 3 4",
"wd4 hd4 ir ib",
"w=2 h=2 stroke=0 M 0 1 L 1 0 L 2 1 L 1 2 Z|w=2 h=2 fill=none M 0 1 L 2 1|w=2 h=2 fill=none M 0 1 L 1"
" 0 L 2 1 L 1 2 Z"},
{"flowChartSummingJunction",
"",
"idx cos wd2 2700000;idy sin hd2 2700000;il +- hc 0 idx;ir +- hc idx 0;it +- vc 0 idy;ib +- vc idy 0",
"il it ir ib",
"stroke=0 M l vc A wd2 hd2 cd2 cd4 A wd2 hd2 3cd4 cd4 A wd2 hd2 0 cd4 A wd2 hd2 cd4 cd4 Z|fill=none M"
" il it L ir ib M ir it L il ib|fill=none M l vc A wd2 hd2 cd2 cd4 A wd2 hd2 3cd4 cd4 A wd2 hd2 0 cd4"
" A wd2 hd2 cd4 cd4 Z"},
{"flowChartTerminator",
"",
"il */ w 1018 21600;ir */ w 20582 21600;it */ h 3163 21600;ib */ h 18437 21600",
"il it ir ib",
"w=21600 h=21600 M 3475 0 L 18125 0 A 3475 10800 3cd4 cd2 L 3475 21600 A 3475 10800 cd4 cd2 Z"},
{"foldedCorner",
"adj 16667",
"a pin 0 adj 50000;dy2 */ ss a 100000;dy1 */ dy2 1 5;x1 +- r 0 dy2;x2 +- x1 dy1 0;y2 +- b 0 dy2;y1 +-"
" y2 dy1 0",
"l t r y2",
"stroke=0 M l t L r t L r y2 L x1 b L l b Z|fill=darkenLess stroke=0 M x1 b L x2 y1 L r y2 "
"Z|fill=none M x1 b L x2 y1 L r y2 L x1 b L l b L l t L r t L r y2"},
{"frame",
"adj1 12500",
"a1 pin 0 adj1 50000;x1 */ ss a1 100000;x4 +- r 0 x1;y4 +- b 0 x1",
"x1 x1 x4 y4",
"M l t L r t L r b L l b Z M x1 x1 L x1 y4 L x4 y4 L x4 x1 Z"},
{"funnel",
"",
"d */ ss 1 20;rw2 +- wd2 0 d;rh2 +- hd4 0 d;t1 cos wd2 480000;t2 sin hd4 480000;da at2 t1 t2;2da */ "
"da 2 1;stAng1 +- cd2 0 da;swAng1 +- cd2 2da 0;swAng3 +- cd2 0 2da;rw3 */ wd2 1 4;rh3 */ hd4 1 4;ct1 "
"cos hd4 stAng1;st1 sin wd2 stAng1;m1 mod ct1 st1 0;n1 */ wd2 hd4 m1;dx1 cos n1 stAng1;dy1 sin n1 "
"stAng1;x1 +- hc dx1 0;y1 +- hd4 dy1 0;ct3 cos rh3 da;st3 sin rw3 da;m3 mod ct3 st3 0;n3 */ rw3 rh3 "
"m3;dx3 cos n3 da;dy3 sin n3 da;x3 +- hc dx3 0;vc3 +- b 0 rh3;y2 +- vc3 dy3 0;x2 +- wd2 0 rw2",
"l t r b",
"M x1 y1 A wd2 hd4 stAng1 swAng1 L x3 y2 A rw3 rh3 da swAng3 Z M x2 hd4 A rw2 rh2 cd2 -21600000 Z"},
{"gear6",
"adj1 15000;adj2 3526",
"a1 pin 0 adj1 20000;a2 pin 0 adj2 5358;th */ ss a1 100000;lFD */ ss a2 100000;th2 */ th 1 2;l2 */ "
"lFD 1 2;l3 +- th2 l2 0;rh +- hd2 0 th;rw +- wd2 0 th;dr +- rw 0 rh;maxr ?: dr rh rw;ha at2 maxr "
"l3;aA1 +- 19800000 0 ha;aD1 +- 19800000 ha 0;ta11 cos rw aA1;ta12 sin rh aA1;bA1 at2 ta11 ta12;cta1 "
"cos rh bA1;sta1 sin rw bA1;ma1 mod cta1 sta1 0;na1 */ rw rh ma1;dxa1 cos na1 bA1;dya1 sin na1 "
"bA1;xA1 +- hc dxa1 0;yA1 +- vc dya1 0;td11 cos rw aD1;td12 sin rh aD1;bD1 at2 td11 td12;ctd1 cos rh "
"bD1;std1 sin rw bD1;md1 mod ctd1 std1 0;nd1 */ rw rh md1;dxd1 cos nd1 bD1;dyd1 sin nd1 bD1;xD1 +- hc"
" dxd1 0;yD1 +- vc dyd1 0;xAD1 +- xA1 0 xD1;yAD1 +- yA1 0 yD1;a1 at2 yAD1 xAD1;dxF1 sin lFD a1;dyF1 "
"cos lFD a1;xF1 +- xD1 dxF1 0;yF1 +- yD1 dyF1 0;xE1 +- xA1 0 dxF1;yE1 +- yA1 0 dyF1;yC1t sin th "
"a1;xC1t cos th a1;yC1 +- yF1 yC1t 0;xC1 +- xF1 0 xC1t;yB1 +- yE1 yC1t 0;xB1 +- xE1 0 xC1t;aD6 +- "
"3cd4 ha 0;td61 cos rw aD6;td62 sin rh aD6;bD6 at2 td61 td62;ctd6 cos rh bD6;std6 sin rw bD6;md6 mod "
"ctd6 std6 0;nd6 */ rw rh md6;dxd6 cos nd6 bD6;dyd6 sin nd6 bD6;xD6 +- hc dxd6 0;yD6 +- vc dyd6 0;xA6"
" +- hc 0 dxd6;xF6 +- xD6 0 lFD;xE6 +- xA6 lFD 0;yC6 +- yD6 0 th;swAng1 +- bA1 0 bD6;aA2 +- 1800000 0"
" ha;aD2 +- 1800000 ha 0;ta21 cos rw aA2;ta22 sin rh aA2;bA2 at2 ta21 ta22;yA2 +- h 0 yD1;td21 cos rw"
" aD2;td22 sin rh aD2;bD2 at2 td21 td22;yD2 +- h 0 yA1;yC2 +- h 0 yB1;yB2 +- h 0 yC1;swAng2 +- bA2 0 "
"bD1;aD3 +- cd4 ha 0;td31 cos rw aD3;td32 sin rh aD3;bD3 at2 td31 td32;yD3 +- h 0 yD6;yB3 +- h 0 "
"yC6;aD4 +- 9000000 ha 0;td41 cos rw aD4;td42 sin rh aD4;bD4 at2 td41 td42;xD4 +- w 0 xD1;xC4 +- w 0 "
"xC1;xB4 +- w 0 xB1;aD5 +- 12600000 ha 0;td51 cos rw aD5;td52 sin rh aD5;bD5 at2 td51 td52;xD5 +- w 0"
" xA1;xC5 +- w 0 xB1;xB5 +- w 0 xC1",
"xD5 yA1 xA1 yD2",
"M xA1 yA1 L xB1 yB1 L xC1 yC1 L xD1 yD1 A rw rh bD1 swAng2 L xC1 yB2 L xB1 yC2 L xA1 yD2 A rw rh bD2"
" swAng1 L xF6 yB3 L xE6 yB3 L xA6 yD3 A rw rh bD3 swAng1 L xB4 yC2 L xC4 yB2 L xD4 yA2 A rw rh bD4 "
"swAng2 L xB5 yC1 L xC5 yB1 L xD5 yA1 A rw rh bD5 swAng1 L xE6 yC6 L xF6 yC6 L xD6 yD6 A rw rh bD6 "
"swAng1 Z"},
{"gear9",
"adj1 10000;adj2 1763",
"a1 pin 0 adj1 20000;a2 pin 0 adj2 2679;th */ ss a1 100000;lFD */ ss a2 100000;th2 */ th 1 2;l2 */ "
"lFD 1 2;l3 +- th2 l2 0;rh +- hd2 0 th;rw +- wd2 0 th;dr +- rw 0 rh;maxr ?: dr rh rw;ha at2 maxr "
"l3;aA1 +- 18600000 0 ha;aD1 +- 18600000 ha 0;ta11 cos rw aA1;ta12 sin rh aA1;bA1 at2 ta11 ta12;cta1 "
"cos rh bA1;sta1 sin rw bA1;ma1 mod cta1 sta1 0;na1 */ rw rh ma1;dxa1 cos na1 bA1;dya1 sin na1 "
"bA1;xA1 +- hc dxa1 0;yA1 +- vc dya1 0;td11 cos rw aD1;td12 sin rh aD1;bD1 at2 td11 td12;ctd1 cos rh "
"bD1;std1 sin rw bD1;md1 mod ctd1 std1 0;nd1 */ rw rh md1;dxd1 cos nd1 bD1;dyd1 sin nd1 bD1;xD1 +- hc"
" dxd1 0;yD1 +- vc dyd1 0;xAD1 +- xA1 0 xD1;yAD1 +- yA1 0 yD1;a1 at2 yAD1 xAD1;dxF1 sin lFD a1;dyF1 "
"cos lFD a1;xF1 +- xD1 dxF1 0;yF1 +- yD1 dyF1 0;xE1 +- xA1 0 dxF1;yE1 +- yA1 0 dyF1;yC1t sin th "
"a1;xC1t cos th a1;yC1 +- yF1 yC1t 0;xC1 +- xF1 0 xC1t;yB1 +- yE1 yC1t 0;xB1 +- xE1 0 xC1t;aA2 +- "
"21000000 0 ha;aD2 +- 21000000 ha 0;ta21 cos rw aA2;ta22 sin rh aA2;bA2 at2 ta21 ta22;cta2 cos rh "
"bA2;sta2 sin rw bA2;ma2 mod cta2 sta2 0;na2 */ rw rh ma2;dxa2 cos na2 bA2;dya2 sin na2 bA2;xA2 +- hc"
" dxa2 0;yA2 +- vc dya2 0;td21 cos rw aD2;td22 sin rh aD2;bD2 at2 td21 td22;ctd2 cos rh bD2;std2 sin "
"rw bD2;md2 mod ctd2 std2 0;nd2 */ rw rh md2;dxd2 cos nd2 bD2;dyd2 sin nd2 bD2;xD2 +- hc dxd2 0;yD2 "
"+- vc dyd2 0;xAD2 +- xA2 0 xD2;yAD2 +- yA2 0 yD2;a2 at2 yAD2 xAD2;dxF2 sin lFD a2;dyF2 cos lFD "
"a2;xF2 +- xD2 dxF2 0;yF2 +- yD2 dyF2 0;xE2 +- xA2 0 dxF2;yE2 +- yA2 0 dyF2;yC2t sin th a2;xC2t cos "
"th a2;yC2 +- yF2 yC2t 0;xC2 +- xF2 0 xC2t;yB2 +- yE2 yC2t 0;xB2 +- xE2 0 xC2t;swAng1 +- bA2 0 "
"bD1;aA3 +- 1800000 0 ha;aD3 +- 1800000 ha 0;ta31 cos rw aA3;ta32 sin rh aA3;bA3 at2 ta31 ta32;cta3 "
"cos rh bA3;sta3 sin rw bA3;ma3 mod cta3 sta3 0;na3 */ rw rh ma3;dxa3 cos na3 bA3;dya3 sin na3 "
"bA3;xA3 +- hc dxa3 0;yA3 +- vc dya3 0;td31 cos rw aD3;td32 sin rh aD3;bD3 at2 td31 td32;ctd3 cos rh "
"bD3;std3 sin rw bD3;md3 mod ctd3 std3 0;nd3 */ rw rh md3;dxd3 cos nd3 bD3;dyd3 sin nd3 bD3;xD3 +- hc"
" dxd3 0;yD3 +- vc dyd3 0;xAD3 +- xA3 0 xD3;yAD3 +- yA3 0 yD3;a3 at2 yAD3 xAD3;dxF3 sin lFD a3;dyF3 "
"cos lFD a3;xF3 +- xD3 dxF3 0;yF3 +- yD3 dyF3 0;xE3 +- xA3 0 dxF3;yE3 +- yA3 0 dyF3;yC3t sin th "
"a3;xC3t cos th a3;yC3 +- yF3 yC3t 0;xC3 +- xF3 0 xC3t;yB3 +- yE3 yC3t 0;xB3 +- xE3 0 xC3t;swAng2 +- "
"bA3 0 bD2;aA4 +- 4200000 0 ha;aD4 +- 4200000 ha 0;ta41 cos rw aA4;ta42 sin rh aA4;bA4 at2 ta41 "
"ta42;cta4 cos rh bA4;sta4 sin rw bA4;ma4 mod cta4 sta4 0;na4 */ rw rh ma4;dxa4 cos na4 bA4;dya4 sin "
"na4 bA4;xA4 +- hc dxa4 0;yA4 +- vc dya4 0;td41 cos rw aD4;td42 sin rh aD4;bD4 at2 td41 td42;ctd4 cos"
" rh bD4;std4 sin rw bD4;md4 mod ctd4 std4 0;nd4 */ rw rh md4;dxd4 cos nd4 bD4;dyd4 sin nd4 bD4;xD4 "
"+- hc dxd4 0;yD4 +- vc dyd4 0;xAD4 +- xA4 0 xD4;yAD4 +- yA4 0 yD4;a4 at2 yAD4 xAD4;dxF4 sin lFD "
"a4;dyF4 cos lFD a4;xF4 +- xD4 dxF4 0;yF4 +- yD4 dyF4 0;xE4 +- xA4 0 dxF4;yE4 +- yA4 0 dyF4;yC4t sin "
"th a4;xC4t cos th a4;yC4 +- yF4 yC4t 0;xC4 +- xF4 0 xC4t;yB4 +- yE4 yC4t 0;xB4 +- xE4 0 xC4t;swAng3 "
"+- bA4 0 bD3;aA5 +- 6600000 0 ha;aD5 +- 6600000 ha 0;ta51 cos rw aA5;ta52 sin rh aA5;bA5 at2 ta51 "
"ta52;td51 cos rw aD5;td52 sin rh aD5;bD5 at2 td51 td52;xD5 +- w 0 xA4;xC5 +- w 0 xB4;xB5 +- w 0 "
"xC4;swAng4 +- bA5 0 bD4;aD6 +- 9000000 ha 0;td61 cos rw aD6;td62 sin rh aD6;bD6 at2 td61 td62;xD6 +-"
" w 0 xA3;xC6 +- w 0 xB3;xB6 +- w 0 xC3;aD7 +- 11400000 ha 0;td71 cos rw aD7;td72 sin rh aD7;bD7 at2 "
"td71 td72;xD7 +- w 0 xA2;xC7 +- w 0 xB2;xB7 +- w 0 xC2;aD8 +- 13800000 ha 0;td81 cos rw aD8;td82 sin"
" rh aD8;bD8 at2 td81 td82;xA8 +- w 0 xD1;xD8 +- w 0 xA1;xC8 +- w 0 xB1;xB8 +- w 0 xC1;aA9 +- 3cd4 0 "
"ha;aD9 +- 3cd4 ha 0;td91 cos rw aD9;td92 sin rh aD9;bD9 at2 td91 td92;ctd9 cos rh bD9;std9 sin rw "
"bD9;md9 mod ctd9 std9 0;nd9 */ rw rh md9;dxd9 cos nd9 bD9;dyd9 sin nd9 bD9;xD9 +- hc dxd9 0;yD9 +- "
"vc dyd9 0;ta91 cos rw aA9;ta92 sin rh aA9;bA9 at2 ta91 ta92;xA9 +- hc 0 dxd9;xF9 +- xD9 0 lFD;xE9 +-"
" xA9 lFD 0;yC9 +- yD9 0 th;swAng5 +- bA9 0 bD8",
"xA8 yD1 xD1 yD3",
"M xA1 yA1 L xB1 yB1 L xC1 yC1 L xD1 yD1 A rw rh bD1 swAng1 L xB2 yB2 L xC2 yC2 L xD2 yD2 A rw rh bD2"
" swAng2 L xB3 yB3 L xC3 yC3 L xD3 yD3 A rw rh bD3 swAng3 L xB4 yB4 L xC4 yC4 L xD4 yD4 A rw rh bD4 "
"swAng4 L xB5 yC4 L xC5 yB4 L xD5 yA4 A rw rh bD5 swAng3 L xB6 yC3 L xC6 yB3 L xD6 yA3 A rw rh bD6 "
"swAng2 L xB7 yC2 L xC7 yB2 L xD7 yA2 A rw rh bD7 swAng1 L xB8 yC1 L xC8 yB1 L xD8 yA1 A rw rh bD8 "
"swAng5 L xE9 yC9 L xF9 yC9 L xD9 yD9 A rw rh bD9 swAng5 Z"},
{"halfFrame",
"adj1 33333;adj2 33333",
"maxAdj2 */ 100000 w ss;a2 pin 0 adj2 maxAdj2;x1 */ ss a2 100000;g1 */ h x1 w;g2 +- h 0 g1;maxAdj1 */"
" 100000 g2 ss;a1 pin 0 adj1 maxAdj1;y1 */ ss a1 100000;dx2 */ y1 w h;x2 +- r 0 dx2;dy2 */ x1 h w;y2 "
"+- b 0 dy2",
"l t r b",
"M l t L r t L x2 y1 L x1 y1 L x1 y2 L l b Z"},
{"heart",
"",
"dx1 */ w 49 48;dx2 */ w 10 48;x1 +- hc 0 dx1;x2 +- hc 0 dx2;x3 +- hc dx2 0;x4 +- hc dx1 0;y1 +- t 0 "
"hd3;il */ w 1 6;ir */ w 5 6;ib */ h 2 3",
"il hd4 ir ib",
"M hc hd4 C x3 y1 x4 hd4 hc b C x1 hd4 x2 y1 hc hd4 Z"},
{"heptagon",
"hf 102572;vf 105210",
"swd2 */ wd2 hf 100000;shd2 */ hd2 vf 100000;svc */ vc vf 100000;dx1 */ swd2 97493 100000;dx2 */ swd2"
" 78183 100000;dx3 */ swd2 43388 100000;dy1 */ shd2 62349 100000;dy2 */ shd2 22252 100000;dy3 */ shd2"
" 90097 100000;x1 +- hc 0 dx1;x2 +- hc 0 dx2;x3 +- hc 0 dx3;x4 +- hc dx3 0;x5 +- hc dx2 0;x6 +- hc "
"dx1 0;y1 +- svc 0 dy1;y2 +- svc dy2 0;y3 +- svc dy3 0;ib +- b 0 y1",
"x2 y1 x5 ib",
"M x1 y2 L x2 y1 L hc t L x5 y1 L x6 y2 L x4 y3 L x3 y3 Z"},
{"hexagon",
"adj 25000;vf 115470",
"maxAdj */ 50000 w ss;a pin 0 adj maxAdj;shd2 */ hd2 vf 100000;x1 */ ss a 100000;x2 +- r 0 x1;dy1 sin"
" shd2 3600000;y1 +- vc 0 dy1;y2 +- vc dy1 0;q1 */ maxAdj -1 2;q2 +- a q1 0;q3 ?: q2 4 2;q4 ?: q2 3 "
"2;q5 ?: q2 q1 0;q6 +/ a q5 q1;q7 */ q6 q4 -1;q8 +- q3 q7 0;il */ w q8 24;it */ h q8 24;ir +- r 0 "
"il;ib +- b 0 it",
"il it ir ib",
"M l vc L x1 y1 L x2 y1 L r vc L x2 y2 L x1 y2 Z"},
{"homePlate",
"adj 50000",
"maxAdj */ 100000 w ss;a pin 0 adj maxAdj;dx1 */ ss a 100000;x1 +- r 0 dx1;ir +/ x1 r 2",
"l t ir b",
"M l t L x1 t L r vc L x1 b L l b Z"},
{"horizontalScroll",
"adj 12500",
"a pin 0 adj 25000;ch */ ss a 100000;ch2 */ ch 1 2;ch4 */ ch 1 4;y3 +- ch ch2 0;y4 +- ch ch 0;y6 +- b"
" 0 ch;y7 +- b 0 ch2;y5 +- y6 0 ch2;x3 +- r 0 ch;x4 +- r 0 ch2",
"ch ch x4 y6",
"stroke=0 M r ch2 A ch2 ch2 0 cd4 L x4 ch2 A ch4 ch4 0 cd2 L x3 ch L ch2 ch A ch2 ch2 3cd4 -5400000 L"
" l y7 A ch2 ch2 cd2 -10800000 L ch y6 L x4 y6 A ch2 ch2 cd4 -5400000 Z M ch2 y4 A ch2 ch2 cd4 "
"-5400000 A ch4 ch4 0 -10800000 Z|fill=darkenLess stroke=0 M ch2 y4 A ch2 ch2 cd4 -5400000 A ch4 ch4 "
"0 -10800000 Z M x4 ch A ch2 ch2 cd4 -16200000 A ch4 ch4 cd2 -10800000 Z|fill=none M l y3 A ch2 ch2 "
"cd2 cd4 L x3 ch L x3 ch2 A ch2 ch2 cd2 cd2 L r y5 A ch2 ch2 0 cd4 L ch y6 L ch y7 A ch2 ch2 0 cd2 Z "
"M x3 ch L x4 ch A ch2 ch2 cd4 -5400000 M x4 ch L x4 ch2 A ch4 ch4 0 cd2 M ch2 y4 L ch2 y3 A ch4 ch4 "
"cd2 cd2 A ch2 ch2 0 cd2 M ch y3 L ch y6"},
{"irregularSeal1",
"",
"x5 */ w 4627 21600;x21 */ w 16702 21600;y3 */ h 6320 21600;y9 */ h 13937 21600",
"x5 y3 x21 y9",
"w=21600 h=21600 M 10800 5800 L 14522 0 L 14155 5325 L 18380 4457 L 16702 7315 L 21097 8137 L 17607 "
"10475 L 21600 13290 L 16837 12942 L 18145 18095 L 14020 14457 L 13247 19737 L 10532 14935 L 8485 "
"21600 L 7715 15627 L 4762 17617 L 5667 13937 L 135 14587 L 3722 11775 L 0 8615 L 4627 7617 L 370 "
"2295 L 7312 6320 L 8352 2295 Z"},
{"irregularSeal2",
"",
"x5 */ w 5372 21600;x19 */ w 14640 21600;y3 */ h 6382 21600;y17 */ h 15935 21600",
"x5 y3 x19 y17",
"w=21600 h=21600 M 11462 4342 L 14790 0 L 14525 5777 L 18007 3172 L 16380 6532 L 21600 6645 L 16985 "
"9402 L 18270 11290 L 16380 12310 L 18877 15632 L 14640 14350 L 14942 17370 L 12180 15935 L 11612 "
"18842 L 9872 17370 L 8700 19712 L 7527 18125 L 4917 21600 L 4805 18240 L 1285 17825 L 3330 15370 L 0"
" 12877 L 3935 11592 L 1172 8270 L 5372 7817 L 4502 3625 L 8550 6382 L 9722 1887 Z"},
{"leftArrow",
"adj1 50000;adj2 50000",
"maxAdj2 */ 100000 w ss;a1 pin 0 adj1 100000;a2 pin 0 adj2 maxAdj2;dx2 */ ss a2 100000;x2 +- l dx2 "
"0;dy1 */ h a1 200000;y1 +- vc 0 dy1;y2 +- vc dy1 0;dx1 */ y1 dx2 hd2;x1 +- x2 0 dx1",
"x1 y1 r y2",
"M l vc L x2 t L x2 y1 L r y1 L r y2 L x2 y2 L x2 b Z"},
{"leftArrowCallout",
"adj1 25000;adj2 25000;adj3 25000;adj4 64977",
"maxAdj2 */ 50000 h ss;a2 pin 0 adj2 maxAdj2;maxAdj1 */ a2 2 1;a1 pin 0 adj1 maxAdj1;maxAdj3 */ "
"100000 w ss;a3 pin 0 adj3 maxAdj3;q2 */ a3 ss w;maxAdj4 +- 100000 0 q2;a4 pin 0 adj4 maxAdj4;dy1 */ "
"ss a2 100000;dy2 */ ss a1 200000;y1 +- vc 0 dy1;y2 +- vc 0 dy2;y3 +- vc dy2 0;y4 +- vc dy1 0;x1 */ "
"ss a3 100000;dx2 */ w a4 100000;x2 +- r 0 dx2",
"x2 t r b",
"M l vc L x1 y1 L x1 y2 L x2 y2 L x2 t L r t L r b L x2 b L x2 y3 L x1 y3 L x1 y4 Z"},
{"leftBrace",
"adj1 8333;adj2 50000",
"a2 pin 0 adj2 100000;q1 +- 100000 0 a2;q2 min q1 a2;q3 */ q2 1 2;maxAdj1 */ q3 h ss;a1 pin 0 adj1 "
"maxAdj1;y1 */ ss a1 100000;y3 */ h a2 100000;y4 +- y3 y1 0;dx1 cos wd2 2700000;dy1 sin y1 2700000;il"
" +- r 0 dx1;it +- y1 0 dy1;ib +- b dy1 y1",
"il it r ib",
"stroke=0 M r b A wd2 y1 cd4 cd4 L hc y4 A wd2 y1 0 -5400000 A wd2 y1 cd4 -5400000 L hc y1 A wd2 y1 "
"cd2 cd4 Z|fill=none M r b A wd2 y1 cd4 cd4 L hc y4 A wd2 y1 0 -5400000 A wd2 y1 cd4 -5400000 L hc y1"
" A wd2 y1 cd2 cd4"},
{"leftBracket",
"adj 8333",
"maxAdj */ 50000 h ss;a pin 0 adj maxAdj;y1 */ ss a 100000;dx1 cos w 2700000;dy1 sin y1 2700000;il +-"
" r 0 dx1;it +- y1 0 dy1;ib +- b dy1 y1",
"il it r ib",
"stroke=0 M r b A w y1 cd4 cd4 L l y1 A w y1 cd2 cd4 Z|fill=none M r b A w y1 cd4 cd4 L l y1 A w y1 "
"cd2 cd4"},
{"leftCircularArrow",
"adj1 12500;adj2 -1142319;adj3 1142319;adj4 10800000;adj5 12500",
"a5 pin 0 adj5 25000;maxAdj1 */ a5 2 1;a1 pin 0 adj1 maxAdj1;enAng pin 1 adj3 21599999;stAng pin 0 "
"adj4 21599999;th */ ss a1 100000;thh */ ss a5 100000;th2 */ th 1 2;rw1 +- wd2 th2 thh;rh1 +- hd2 th2"
" thh;rw2 +- rw1 0 th;rh2 +- rh1 0 th;rw3 +- rw2 th2 0;rh3 +- rh2 th2 0;wtH sin rw3 enAng;htH cos rh3"
" enAng;dxH cat2 rw3 htH wtH;dyH sat2 rh3 htH wtH;xH +- hc dxH 0;yH +- vc dyH 0;rI min rw2 rh2;u1 */ "
"dxH dxH 1;u2 */ dyH dyH 1;u3 */ rI rI 1;u4 +- u1 0 u3;u5 +- u2 0 u3;u6 */ u4 u5 u1;u7 */ u6 1 u2;u8 "
"+- 1 0 u7;u9 sqrt u8;u10 */ u4 1 dxH;u11 */ u10 1 dyH;u12 +/ 1 u9 u11;u13 at2 1 u12;u14 +- u13 "
"21600000 0;u15 ?: u13 u13 u14;u16 +- u15 0 enAng;u17 +- u16 21600000 0;u18 ?: u16 u16 u17;u19 +- u18"
" 0 cd2;u20 +- u18 0 21600000;u21 ?: u19 u20 u18;u22 abs u21;minAng */ u22 -1 1;u23 abs adj2;a2 */ "
"u23 -1 1;aAng pin minAng a2 0;ptAng +- enAng aAng 0;wtA sin rw3 ptAng;htA cos rh3 ptAng;dxA cat2 rw3"
" htA wtA;dyA sat2 rh3 htA wtA;xA +- hc dxA 0;yA +- vc dyA 0;wtE sin rw1 stAng;htE cos rh1 stAng;dxE "
"cat2 rw1 htE wtE;dyE sat2 rh1 htE wtE;xE +- hc dxE 0;yE +- vc dyE 0;wtD sin rw2 stAng;htD cos rh2 "
"stAng;dxD cat2 rw2 htD wtD;dyD sat2 rh2 htD wtD;xD +- hc dxD 0;yD +- vc dyD 0;dxG cos thh ptAng;dyG "
"sin thh ptAng;xG +- xH dxG 0;yG +- yH dyG 0;dxB cos thh ptAng;dyB sin thh ptAng;xB +- xH 0 dxB 0;yB "
"+- yH 0 dyB 0;sx1 +- xB 0 hc;sy1 +- yB 0 vc;sx2 +- xG 0 hc;sy2 +- yG 0 vc;rO min rw1 rh1;x1O */ sx1 "
"rO rw1;y1O */ sy1 rO rh1;x2O */ sx2 rO rw1;y2O */ sy2 rO rh1;dxO +- x2O 0 x1O;dyO +- y2O 0 y1O;dO "
"mod dxO dyO 0;q1 */ x1O y2O 1;q2 */ x2O y1O 1;DO +- q1 0 q2;q3 */ rO rO 1;q4 */ dO dO 1;q5 */ q3 q4 "
"1;q6 */ DO DO 1;q7 +- q5 0 q6;q8 max q7 0;sdelO sqrt q8;ndyO */ dyO -1 1;sdyO ?: ndyO -1 1;q9 */ "
"sdyO dxO 1;q10 */ q9 sdelO 1;q11 */ DO dyO 1;dxF1 +/ q11 q10 q4;q12 +- q11 0 q10;dxF2 */ q12 1 "
"q4;adyO abs dyO;q13 */ adyO sdelO 1;q14 */ DO dxO -1;dyF1 +/ q14 q13 q4;q15 +- q14 0 q13;dyF2 */ q15"
" 1 q4;q16 +- x2O 0 dxF1;q17 +- x2O 0 dxF2;q18 +- y2O 0 dyF1;q19 +- y2O 0 dyF2;q20 mod q16 q18 0;q21 "
"mod q17 q19 0;q22 +- q21 0 q20;dxF ?: q22 dxF1 dxF2;dyF ?: q22 dyF1 dyF2;sdxF */ dxF rw1 rO;sdyF */ "
"dyF rh1 rO;xF +- hc sdxF 0;yF +- vc sdyF 0;x1I */ sx1 rI rw2;y1I */ sy1 rI rh2;x2I */ sx2 rI rw2;y2I"
" */ sy2 rI rh2;dxI +- x2I 0 x1I;dyI +- y2I 0 y1I;dI mod dxI dyI 0;v1 */ x1I y2I 1;v2 */ x2I y1I 1;DI"
" +- v1 0 v2;v3 */ rI rI 1;v4 */ dI dI 1;v5 */ v3 v4 1;v6 */ DI DI 1;v7 +- v5 0 v6;v8 max v7 0;sdelI "
"sqrt v8;v9 */ sdyO dxI 1;v10 */ v9 sdelI 1;v11 */ DI dyI 1;dxC1 +/ v11 v10 v4;v12 +- v11 0 v10;dxC2 "
"*/ v12 1 v4;adyI abs dyI;v13 */ adyI sdelI 1;v14 */ DI dxI -1;dyC1 +/ v14 v13 v4;v15 +- v14 0 "
"v13;dyC2 */ v15 1 v4;v16 +- x1I 0 dxC1;v17 +- x1I 0 dxC2;v18 +- y1I 0 dyC1;v19 +- y1I 0 dyC2;v20 mod"
" v16 v18 0;v21 mod v17 v19 0;v22 +- v21 0 v20;dxC ?: v22 dxC1 dxC2;dyC ?: v22 dyC1 dyC2;sdxC */ dxC "
"rw2 rI;sdyC */ dyC rh2 rI;xC +- hc sdxC 0;yC +- vc sdyC 0;ist0 at2 sdxC sdyC;ist1 +- ist0 21600000 "
"0;istAng0 ?: ist0 ist0 ist1;isw1 +- stAng 0 istAng0;isw2 +- isw1 21600000 0;iswAng0 ?: isw1 isw1 "
"isw2;istAng +- istAng0 iswAng0 0;iswAng +- 0 0 iswAng0;p1 +- xF 0 xC;p2 +- yF 0 yC;p3 mod p1 p2 0;p4"
" */ p3 1 2;p5 +- p4 0 thh;xGp ?: p5 xF xG;yGp ?: p5 yF yG;xBp ?: p5 xC xB;yBp ?: p5 yC yB;en0 at2 "
"sdxF sdyF;en1 +- en0 21600000 0;en2 ?: en0 en0 en1;sw0 +- en2 0 stAng;sw1 +- sw0 0 21600000;swAng ?:"
" sw0 sw1 sw0;stAng0 +- stAng swAng 0;swAng0 +- 0 0 swAng;idx cos rw1 2700000;idy sin rh1 2700000;il "
"+- hc 0 idx;ir +- hc idx 0;it +- vc 0 idy;ib +- vc idy 0",
"il it ir ib",
"M xE yE L xD yD A rw2 rh2 istAng iswAng L xBp yBp L xA yA L xGp yGp L xF yF A rw1 rh1 stAng0 swAng0 "
"Z"},
{"leftRightArrow",
"adj1 50000;adj2 50000",
"maxAdj2 */ 50000 w ss;a1 pin 0 adj1 100000;a2 pin 0 adj2 maxAdj2;x2 */ ss a2 100000;x3 +- r 0 x2;dy "
"*/ h a1 200000;y1 +- vc 0 dy;y2 +- vc dy 0;dx1 */ y1 x2 hd2;x1 +- x2 0 dx1;x4 +- x3 dx1 0",
"x1 y1 x4 y2",
"M l vc L x2 t L x2 y1 L x3 y1 L x3 t L r vc L x3 b L x3 y2 L x2 y2 L x2 b Z"},
{"leftRightArrowCallout",
"adj1 25000;adj2 25000;adj3 25000;adj4 48123",
"maxAdj2 */ 50000 h ss;a2 pin 0 adj2 maxAdj2;maxAdj1 */ a2 2 1;a1 pin 0 adj1 maxAdj1;maxAdj3 */ 50000"
" w ss;a3 pin 0 adj3 maxAdj3;q2 */ a3 ss wd2;maxAdj4 +- 100000 0 q2;a4 pin 0 adj4 maxAdj4;dy1 */ ss "
"a2 100000;dy2 */ ss a1 200000;y1 +- vc 0 dy1;y2 +- vc 0 dy2;y3 +- vc dy2 0;y4 +- vc dy1 0;x1 */ ss "
"a3 100000;x4 +- r 0 x1;dx2 */ w a4 200000;x2 +- hc 0 dx2;x3 +- hc dx2 0",
"x2 t x3 b",
"M l vc L x1 y1 L x1 y2 L x2 y2 L x2 t L x3 t L x3 y2 L x4 y2 L x4 y1 L r vc L x4 y4 L x4 y3 L x3 y3 "
"L x3 b L x2 b L x2 y3 L x1 y3 L x1 y4 Z"},
{"leftRightCircularArrow",
"adj1 12500;adj2 1142319;adj3 20457681;adj4 11942319;adj5 12500",
"a5 pin 0 adj5 25000;maxAdj1 */ a5 2 1;a1 pin 0 adj1 maxAdj1;enAng pin 1 adj3 21599999;stAng pin 0 "
"adj4 21599999;th */ ss a1 100000;thh */ ss a5 100000;th2 */ th 1 2;rw1 +- wd2 th2 thh;rh1 +- hd2 th2"
" thh;rw2 +- rw1 0 th;rh2 +- rh1 0 th;rw3 +- rw2 th2 0;rh3 +- rh2 th2 0;wtH sin rw3 enAng;htH cos rh3"
" enAng;dxH cat2 rw3 htH wtH;dyH sat2 rh3 htH wtH;xH +- hc dxH 0;yH +- vc dyH 0;rI min rw2 rh2;u1 */ "
"dxH dxH 1;u2 */ dyH dyH 1;u3 */ rI rI 1;u4 +- u1 0 u3;u5 +- u2 0 u3;u6 */ u4 u5 u1;u7 */ u6 1 u2;u8 "
"+- 1 0 u7;u9 sqrt u8;u10 */ u4 1 dxH;u11 */ u10 1 dyH;u12 +/ 1 u9 u11;u13 at2 1 u12;u14 +- u13 "
"21600000 0;u15 ?: u13 u13 u14;u16 +- u15 0 enAng;u17 +- u16 21600000 0;u18 ?: u16 u16 u17;u19 +- u18"
" 0 cd2;u20 +- u18 0 21600000;u21 ?: u19 u20 u18;maxAng abs u21;aAng pin 0 adj2 maxAng;ptAng +- enAng"
" aAng 0;wtA sin rw3 ptAng;htA cos rh3 ptAng;dxA cat2 rw3 htA wtA;dyA sat2 rh3 htA wtA;xA +- hc dxA "
"0;yA +- vc dyA 0;dxG cos thh ptAng;dyG sin thh ptAng;xG +- xH dxG 0;yG +- yH dyG 0;dxB cos thh "
"ptAng;dyB sin thh ptAng;xB +- xH 0 dxB 0;yB +- yH 0 dyB 0;sx1 +- xB 0 hc;sy1 +- yB 0 vc;sx2 +- xG 0 "
"hc;sy2 +- yG 0 vc;rO min rw1 rh1;x1O */ sx1 rO rw1;y1O */ sy1 rO rh1;x2O */ sx2 rO rw1;y2O */ sy2 rO"
" rh1;dxO +- x2O 0 x1O;dyO +- y2O 0 y1O;dO mod dxO dyO 0;q1 */ x1O y2O 1;q2 */ x2O y1O 1;DO +- q1 0 "
"q2;q3 */ rO rO 1;q4 */ dO dO 1;q5 */ q3 q4 1;q6 */ DO DO 1;q7 +- q5 0 q6;q8 max q7 0;sdelO sqrt "
"q8;ndyO */ dyO -1 1;sdyO ?: ndyO -1 1;q9 */ sdyO dxO 1;q10 */ q9 sdelO 1;q11 */ DO dyO 1;dxF1 +/ q11"
" q10 q4;q12 +- q11 0 q10;dxF2 */ q12 1 q4;adyO abs dyO;q13 */ adyO sdelO 1;q14 */ DO dxO -1;dyF1 +/ "
"q14 q13 q4;q15 +- q14 0 q13;dyF2 */ q15 1 q4;q16 +- x2O 0 dxF1;q17 +- x2O 0 dxF2;q18 +- y2O 0 "
"dyF1;q19 +- y2O 0 dyF2;q20 mod q16 q18 0;q21 mod q17 q19 0;q22 +- q21 0 q20;dxF ?: q22 dxF1 dxF2;dyF"
" ?: q22 dyF1 dyF2;sdxF */ dxF rw1 rO;sdyF */ dyF rh1 rO;xF +- hc sdxF 0;yF +- vc sdyF 0;x1I */ sx1 "
"rI rw2;y1I */ sy1 rI rh2;x2I */ sx2 rI rw2;y2I */ sy2 rI rh2;dxI +- x2I 0 x1I;dyI +- y2I 0 y1I;dI "
"mod dxI dyI 0;v1 */ x1I y2I 1;v2 */ x2I y1I 1;DI +- v1 0 v2;v3 */ rI rI 1;v4 */ dI dI 1;v5 */ v3 v4 "
"1;v6 */ DI DI 1;v7 +- v5 0 v6;v8 max v7 0;sdelI sqrt v8;v9 */ sdyO dxI 1;v10 */ v9 sdelI 1;v11 */ DI"
" dyI 1;dxC1 +/ v11 v10 v4;v12 +- v11 0 v10;dxC2 */ v12 1 v4;adyI abs dyI;v13 */ adyI sdelI 1;v14 */ "
"DI dxI -1;dyC1 +/ v14 v13 v4;v15 +- v14 0 v13;dyC2 */ v15 1 v4;v16 +- x1I 0 dxC1;v17 +- x1I 0 "
"dxC2;v18 +- y1I 0 dyC1;v19 +- y1I 0 dyC2;v20 mod v16 v18 0;v21 mod v17 v19 0;v22 +- v21 0 v20;dxC ?:"
" v22 dxC1 dxC2;dyC ?: v22 dyC1 dyC2;sdxC */ dxC rw2 rI;sdyC */ dyC rh2 rI;xC +- hc sdxC 0;yC +- vc "
"sdyC 0;wtI sin rw3 stAng;htI cos rh3 stAng;dxI cat2 rw3 htI wtI;dyI sat2 rh3 htI wtI;xI +- hc dxI "
"0;yI +- vc dyI 0;lptAng +- stAng 0 aAng;wtL sin rw3 lptAng;htL cos rh3 lptAng;dxL cat2 rw3 htL "
"wtL;dyL sat2 rh3 htL wtL;xL +- hc dxL 0;yL +- vc dyL 0;dxK cos thh lptAng;dyK sin thh lptAng;xK +- "
"xI dxK 0;yK +- yI dyK 0;dxJ cos thh lptAng;dyJ sin thh lptAng;xJ +- xI 0 dxJ 0;yJ +- yI 0 dyJ 0;p1 "
"+- xF 0 xC;p2 +- yF 0 yC;p3 mod p1 p2 0;p4 */ p3 1 2;p5 +- p4 0 thh;xGp ?: p5 xF xG;yGp ?: p5 yF "
"yG;xBp ?: p5 xC xB;yBp ?: p5 yC yB;en0 at2 sdxF sdyF;en1 +- en0 21600000 0;en2 ?: en0 en0 en1;od0 +-"
" en2 0 enAng;od1 +- od0 21600000 0;od2 ?: od0 od0 od1;st0 +- stAng 0 od2;st1 +- st0 21600000 0;st2 "
"?: st0 st0 st1;sw0 +- en2 0 st2;sw1 +- sw0 21600000 0;swAng ?: sw0 sw0 sw1;ist0 at2 sdxC sdyC;ist1 "
"+- ist0 21600000 0;istAng ?: ist0 ist0 ist1;id0 +- istAng 0 enAng;id1 +- id0 0 21600000;id2 ?: id0 "
"id1 id0;ien0 +- stAng 0 id2;ien1 +- ien0 0 21600000;ien2 ?: ien1 ien1 ien0;isw1 +- ien2 0 "
"istAng;isw2 +- isw1 0 21600000;iswAng ?: isw1 isw2 isw1;wtE sin rw1 st2;htE cos rh1 st2;dxE cat2 rw1"
" htE wtE;dyE sat2 rh1 htE wtE;xE +- hc dxE 0;yE +- vc dyE 0;wtD sin rw2 ien2;htD cos rh2 ien2;dxD "
"cat2 rw2 htD wtD;dyD sat2 rh2 htD wtD;xD +- hc dxD 0;yD +- vc dyD 0;xKp ?: p5 xE xK;yKp ?: p5 yE "
"yK;xJp ?: p5 xD xJ;yJp ?: p5 yD yJ;idx cos rw1 2700000;idy sin rh1 2700000;il +- hc 0 idx;ir +- hc "
"idx 0;it +- vc 0 idy;ib +- vc idy 0",
"il it ir ib",
"M xL yL L xKp yKp L xE yE A rw1 rh1 st2 swAng L xGp yGp L xA yA L xBp yBp L xC yC A rw2 rh2 istAng "
"iswAng L xJp yJp Z"},
{"leftRightRibbon",
"adj1 50000;adj2 50000;adj3 16667",
"a3 pin 0 adj3 33333;maxAdj1 +- 100000 0 a3;a1 pin 0 adj1 maxAdj1;w1 +- wd2 0 wd32;maxAdj2 */ 100000 "
"w1 ss;a2 pin 0 adj2 maxAdj2;x1 */ ss a2 100000;x4 +- r 0 x1;dy1 */ h a1 200000;dy2 */ h a3 "
"-200000;ly1 +- vc dy2 dy1;ry4 +- vc dy1 dy2;ly2 +- ly1 dy1 0;ry3 +- b 0 ly2;ly4 */ ly2 2 1;ry1 +- b "
"0 ly4;ly3 +- ly4 0 ly1;ry2 +- b 0 ly3;hR */ a3 ss 400000;x2 +- hc 0 wd32;x3 +- hc wd32 0;y1 +- ly1 "
"hR 0;y2 +- ry2 0 hR",
"x1 ly1 x4 ry4",
"stroke=0 M l ly2 L x1 t L x1 ly1 L hc ly1 A wd32 hR 3cd4 cd2 A wd32 hR 3cd4 -10800000 L x4 ry2 L x4 "
"ry1 L r ry3 L x4 b L x4 ry4 L hc ry4 A wd32 hR cd4 cd4 L x2 ly3 L x1 ly3 L x1 ly4 Z|fill=darkenLess "
"stroke=0 M x3 y1 A wd32 hR 0 cd4 A wd32 hR 3cd4 -10800000 L x3 ry2 Z|fill=none M l ly2 L x1 t L x1 "
"ly1 L hc ly1 A wd32 hR 3cd4 cd2 A wd32 hR 3cd4 -10800000 L x4 ry2 L x4 ry1 L r ry3 L x4 b L x4 ry4 L"
" hc ry4 A wd32 hR cd4 cd4 L x2 ly3 L x1 ly3 L x1 ly4 Z M x3 y1 L x3 ry2 M x2 y2 L x2 ly3"},
{"leftRightUpArrow",
"adj1 25000;adj2 25000;adj3 25000",
"a2 pin 0 adj2 50000;maxAdj1 */ a2 2 1;a1 pin 0 adj1 maxAdj1;q1 +- 100000 0 maxAdj1;maxAdj3 */ q1 1 "
"2;a3 pin 0 adj3 maxAdj3;x1 */ ss a3 100000;dx2 */ ss a2 100000;x2 +- hc 0 dx2;x5 +- hc dx2 0;dx3 */ "
"ss a1 200000;x3 +- hc 0 dx3;x4 +- hc dx3 0;x6 +- r 0 x1;dy2 */ ss a2 50000;y2 +- b 0 dy2;y4 +- b 0 "
"dx2;y3 +- y4 0 dx3;y5 +- y4 dx3 0;il */ dx3 x1 dx2;ir +- r 0 il",
"il y3 ir y5",
"M l y4 L x1 y2 L x1 y3 L x3 y3 L x3 x1 L x2 x1 L hc t L x5 x1 L x4 x1 L x4 y3 L x6 y3 L x6 y2 L r y4"
" L x6 b L x6 y5 L x1 y5 L x1 b Z"},
{"leftUpArrow",
"adj1 25000;adj2 25000;adj3 25000",
"a2 pin 0 adj2 50000;maxAdj1 */ a2 2 1;a1 pin 0 adj1 maxAdj1;maxAdj3 +- 100000 0 maxAdj1;a3 pin 0 "
"adj3 maxAdj3;x1 */ ss a3 100000;dx2 */ ss a2 50000;x2 +- r 0 dx2;y2 +- b 0 dx2;dx4 */ ss a2 "
"100000;x4 +- r 0 dx4;y4 +- b 0 dx4;dx3 */ ss a1 200000;x3 +- x4 0 dx3;x5 +- x4 dx3 0;y3 +- y4 0 "
"dx3;y5 +- y4 dx3 0;il */ dx3 x1 dx4",
"il y3 x4 y5",
"M l y4 L x1 y2 L x1 y3 L x3 y3 L x3 x1 L x2 x1 L x4 t L r x1 L x5 x1 L x5 y5 L x1 y5 L x1 b Z"},
{"lightningBolt",
"",
"x4 */ w 8757 21600;x9 */ w 13917 21600;y4 */ h 7437 21600;y10 */ h 14277 21600",
"x4 y4 x9 y10",
"w=21600 h=21600 M 8472 0 L 12860 6080 L 11050 6797 L 16577 12007 L 14767 12877 L 21600 21600 L 10012"
" 14915 L 12222 13987 L 5022 9705 L 7602 8382 L 0 3890 Z"},
{"line",
"",
"",
"l t r b",
"M l t L r b"},
{"lineInv",
"",
"",
"l t r b",
"M l b L r t"},
{"mathDivide",
"adj1 23520;adj2 5880;adj3 11760",
"a1 pin 1000 adj1 36745;ma1 +- 0 0 a1;ma3h +/ 73490 ma1 4;ma3w */ 36745 w h;maxAdj3 min ma3h ma3w;a3 "
"pin 1000 adj3 maxAdj3;m4a3 */ -4 a3 1;maxAdj2 +- 73490 m4a3 a1;a2 pin 0 adj2 maxAdj2;dy1 */ h a1 "
"200000;yg */ h a2 100000;rad */ h a3 100000;dx1 */ w 73490 200000;y3 +- vc 0 dy1;y4 +- vc dy1 0;a +-"
" yg rad 0;y2 +- y3 0 a;y1 +- y2 0 rad;y5 +- b 0 y1;x1 +- hc 0 dx1;x3 +- hc dx1 0",
"x1 y3 x3 y4",
"M hc y1 A rad rad 3cd4 21600000 Z M hc y5 A rad rad cd4 21600000 Z M x1 y3 L x3 y3 L x3 y4 L x1 y4 Z"},
{"mathEqual",
"adj1 23520;adj2 11760",
"a1 pin 0 adj1 36745;2a1 */ a1 2 1;mAdj2 +- 100000 0 2a1;a2 pin 0 adj2 mAdj2;dy1 */ h a1 100000;dy2 "
"*/ h a2 200000;dx1 */ w 73490 200000;y2 +- vc 0 dy2;y3 +- vc dy2 0;y1 +- y2 0 dy1;y4 +- y3 dy1 0;x1 "
"+- hc 0 dx1;x2 +- hc dx1 0",
"x1 y1 x2 y4",
"M x1 y1 L x2 y1 L x2 y2 L x1 y2 Z M x1 y3 L x2 y3 L x2 y4 L x1 y4 Z"},
{"mathMinus",
"adj1 23520",
"a1 pin 0 adj1 100000;dy1 */ h a1 200000;dx1 */ w 73490 200000;y1 +- vc 0 dy1;y2 +- vc dy1 0;x1 +- hc"
" 0 dx1;x2 +- hc dx1 0",
"x1 y1 x2 y2",
"M x1 y1 L x2 y1 L x2 y2 L x1 y2 Z"},
{"mathMultiply",
"adj1 23520",
"a1 pin 0 adj1 51965;th */ ss a1 100000;a at2 w h;sa sin 1 a;ca cos 1 a;ta tan 1 a;dl mod w h 0;rw */"
" dl 51965 100000;lM +- dl 0 rw;xM */ ca lM 2;yM */ sa lM 2;dxAM */ sa th 2;dyAM */ ca th 2;xA +- xM "
"0 dxAM;yA +- yM dyAM 0;xB +- xM dxAM 0;yB +- yM 0 dyAM;xBC +- hc 0 xB;yBC */ xBC ta 1;yC +- yBC yB "
"0;xD +- r 0 xB;xE +- r 0 xA;yFE +- vc 0 yA;xFE */ yFE 1 ta;xF +- xE 0 xFE;xL +- xA xFE 0;yG +- b 0 "
"yA;yH +- b 0 yB;yI +- b 0 yC",
"xA yB xE yH",
"M xA yA L xB yB L hc yC L xD yB L xE yA L xF vc L xE yG L xD yH L hc yI L xB yH L xA yG L xL vc Z"},
{"mathNotEqual",
"adj1 23520;adj2 6600000;adj3 11760",
"a1 pin 0 adj1 50000;crAng pin 4200000 adj2 6600000;2a1 */ a1 2 1;maxAdj3 +- 100000 0 2a1;a3 pin 0 "
"adj3 maxAdj3;dy1 */ h a1 100000;dy2 */ h a3 200000;dx1 */ w 73490 200000;x1 +- hc 0 dx1;x8 +- hc dx1"
" 0;y2 +- vc 0 dy2;y3 +- vc dy2 0;y1 +- y2 0 dy1;y4 +- y3 dy1 0;cadj2 +- crAng 0 cd4;xadj2 tan hd2 "
"cadj2;len mod xadj2 hd2 0;bhw */ len dy1 hd2;bhw2 */ bhw 1 2;x7 +- hc xadj2 bhw2;dx67 */ xadj2 y1 "
"hd2;x6 +- x7 0 dx67;dx57 */ xadj2 y2 hd2;x5 +- x7 0 dx57;dx47 */ xadj2 y3 hd2;x4 +- x7 0 dx47;dx37 "
"*/ xadj2 y4 hd2;x3 +- x7 0 dx37;rx7 +- x7 bhw 0;rx6 +- x6 bhw 0;rx5 +- x5 bhw 0;rx4 +- x4 bhw 0;rx3 "
"+- x3 bhw 0;dx7 */ dy1 hd2 len;rxt +- x7 dx7 0;lxt +- rx7 0 dx7;rx ?: cadj2 rxt rx7;lx ?: cadj2 x7 "
"lxt;dy3 */ dy1 xadj2 len;dy4 +- 0 0 dy3;ry ?: cadj2 dy3 t;ly ?: cadj2 t dy4;dlx +- w 0 rx;drx +- w 0"
" lx;dly +- h 0 ry;dry +- h 0 ly",
"x1 y1 x8 y4",
"M x1 y1 L x6 y1 L lx ly L rx ry L rx6 y1 L x8 y1 L x8 y2 L rx5 y2 L rx4 y3 L x8 y3 L x8 y4 L rx3 y4 "
"L drx dry L dlx dly L x3 y4 L x1 y4 L x1 y3 L x4 y3 L x5 y2 L x1 y2 Z"},
{"mathPlus",
"adj1 23520",
"a1 pin 0 adj1 73490;dx1 */ w 73490 200000;dy1 */ h 73490 200000;dx2 */ ss a1 200000;x1 +- hc 0 "
"dx1;x2 +- hc 0 dx2;x3 +- hc dx2 0;x4 +- hc dx1 0;y1 +- vc 0 dy1;y2 +- vc 0 dx2;y3 +- vc dx2 0;y4 +- "
"vc dy1 0",
"x1 y2 x4 y3",
"M x1 y2 L x2 y2 L x2 y1 L x3 y1 L x3 y2 L x4 y2 L x4 y3 L x3 y3 L x3 y4 L x2 y4 L x2 y3 L x1 y3 Z"},
{"moon",
"adj 50000",
"a pin 0 adj 87500;g0 */ ss a 100000;g0w */ g0 w ss;g1 +- ss 0 g0;g2 */ g0 g0 g1;g3 */ ss ss g1;g4 */"
" g3 2 1;g5 +- g4 0 g2;g6 +- g5 0 g0;g6w */ g6 w ss;g7 */ g5 1 2;g8 +- g7 0 g0;dy1 */ g8 hd2 ss;g12 "
"*/ g0 9598 32768;g12w */ g12 w ss;g13 +- ss 0 g12;q1 */ ss ss 1;q2 */ g13 g13 1;q3 +- q1 0 q2;q4 "
"sqrt q3;dy4 */ q4 hd2 ss;g15h +- vc 0 dy4;g16h +- vc dy4 0;g17w +- g6w 0 g0w;g18w */ g17w 1 2;dx2p "
"+- g0w g18w w;dx2 */ dx2p -1 1;dy2 */ hd2 -1 1;stAng1 at2 dx2 dy2;enAngp1 at2 dx2 hd2;enAng1 +- "
"enAngp1 0 21600000;swAng1 +- enAng1 0 stAng1",
"g12w g15h g0w g16h",
"M r b A w hd2 cd4 cd2 A g18w dy1 stAng1 swAng1 Z"},
{"noSmoking",
"adj 18750",
"a pin 0 adj 50000;dr */ ss a 100000;iwd2 +- wd2 0 dr;ihd2 +- hd2 0 dr;ang at2 w h;ct cos ihd2 ang;st"
" sin iwd2 ang;m mod ct st 0;n */ iwd2 ihd2 m;drd2 */ dr 1 2;dang at2 n drd2;dang2 */ dang 2 1;swAng "
"+- -10800000 dang2 0;t3 at2 w h;stAng1 +- t3 0 dang;stAng2 +- stAng1 0 cd2;ct1 cos ihd2 stAng1;st1 "
"sin iwd2 stAng1;m1 mod ct1 st1 0;n1 */ iwd2 ihd2 m1;dx1 cos n1 stAng1;dy1 sin n1 stAng1;x1 +- hc dx1"
" 0;y1 +- vc dy1 0;x2 +- hc 0 dx1;y2 +- vc 0 dy1;idx cos wd2 2700000;idy sin hd2 2700000;il +- hc 0 "
"idx;ir +- hc idx 0;it +- vc 0 idy;ib +- vc idy 0",
"il it ir ib",
"M l vc A wd2 hd2 cd2 cd4 A wd2 hd2 3cd4 cd4 A wd2 hd2 0 cd4 A wd2 hd2 cd4 cd4 Z M x1 y1 A iwd2 ihd2 "
"stAng1 swAng Z M x2 y2 A iwd2 ihd2 stAng2 swAng Z"},
{"nonIsoscelesTrapezoid",
"adj1 25000;adj2 25000",
"maxAdj */ 50000 w ss;a1 pin 0 adj1 maxAdj;a2 pin 0 adj2 maxAdj;x2 */ ss a1 100000;dx3 */ ss a2 "
"100000;x3 +- r 0 dx3;il */ wd3 a1 maxAdj;adjm max a1 a2;it */ hd3 adjm maxAdj;irt */ wd3 a2 "
"maxAdj;ir +- r 0 irt",
"il it ir b",
"M l b L x2 t L x3 t L r b Z"},
{"notchedRightArrow",
"adj1 50000;adj2 50000",
"maxAdj2 */ 100000 w ss;a1 pin 0 adj1 100000;a2 pin 0 adj2 maxAdj2;dx2 */ ss a2 100000;x2 +- r 0 "
"dx2;dy1 */ h a1 200000;y1 +- vc 0 dy1;y2 +- vc dy1 0;x1 */ dy1 dx2 hd2;x3 +- r 0 x1",
"x1 y1 x3 y2",
"M l y1 L x2 y1 L x2 t L r vc L x2 b L x2 y2 L l y2 L x1 vc Z"},
{"octagon",
"adj 29289",
"a pin 0 adj 50000;x1 */ ss a 100000;x2 +- r 0 x1;y2 +- b 0 x1;il */ x1 1 2;ir +- r 0 il;ib +- b 0 il",
"il il ir ib",
"M l x1 L x1 t L x2 t L r x1 L r y2 L x2 b L x1 b L l y2 Z"},
{"parallelogram",
"adj 25000",
"maxAdj */ 100000 w ss;a pin 0 adj maxAdj;x2 */ ss a 100000;x5 +- r 0 x2;il */ wd2 a maxAdj;q1 */ 5 a"
" maxAdj;q2 +/ 1 q1 12;il */ q2 w 1;it */ q2 h 1;ir +- r 0 il;ib +- b 0 it",
"il it ir ib",
"M l b L x2 t L r t L x5 b Z"},
{"pentagon",
"hf 105146;vf 110557",
"swd2 */ wd2 hf 100000;shd2 */ hd2 vf 100000;svc */ vc vf 100000;dx1 cos swd2 1080000;dx2 cos swd2 "
"18360000;dy1 sin shd2 1080000;dy2 sin shd2 18360000;x1 +- hc 0 dx1;x2 +- hc 0 dx2;x3 +- hc dx2 0;x4 "
"+- hc dx1 0;y1 +- svc 0 dy1;y2 +- svc 0 dy2;it */ y1 dx2 dx1",
"x2 it x3 y2",
"M x1 y1 L hc t L x4 y1 L x3 y2 L x2 y2 Z"},
{"pie",
"adj1 0;adj2 16200000",
"stAng pin 0 adj1 21599999;enAng pin 0 adj2 21599999;sw1 +- enAng 0 stAng;sw2 +- sw1 21600000 0;swAng"
" ?: sw1 sw1 sw2;wt1 sin wd2 stAng;ht1 cos hd2 stAng;dx1 cat2 wd2 ht1 wt1;dy1 sat2 hd2 ht1 wt1;x1 +- "
"hc dx1 0;y1 +- vc dy1 0;idx cos wd2 2700000;idy sin hd2 2700000;il +- hc 0 idx;ir +- hc idx 0;it +- "
"vc 0 idy;ib +- vc idy 0",
"il ir it ib",
"M x1 y1 A wd2 hd2 stAng swAng L hc vc Z"},
{"pieWedge",
"",
"g1 cos w 13500000;g2 sin h 13500000;x1 +- r g1 0;y1 +- b g2 0",
"x1 y1 r b",
"M l b A w h cd2 cd4 L r b Z"},
{"plaque",
"adj 16667",
"a pin 0 adj 50000;x1 */ ss a 100000;x2 +- r 0 x1;y2 +- b 0 x1;il */ x1 70711 100000;ir +- r 0 il;ib "
"+- b 0 il",
"il il ir ib",
"M l x1 A x1 x1 cd4 -5400000 L x2 t A x1 x1 cd2 -5400000 L r y2 A x1 x1 3cd4 -5400000 L x1 b A x1 x1 "
"0 -5400000 Z"},
{"plaqueTabs",
"",
"md mod w h 0;dx */ 1 md 20;y1 +- 0 b dx;x1 +- 0 r dx",
"dx dx x1 y1",
"M l t L dx t A dx dx 0 cd4 Z|M l y1 A dx dx 3cd4 cd4 L l b Z|M r t L r dx A dx dx cd4 cd4 Z|M x1 b A"
" dx dx cd2 cd4 L r b Z"},
{"plus",
"adj 25000",
"a pin 0 adj 50000;x1 */ ss a 100000;x2 +- r 0 x1;y2 +- b 0 x1;d +- w 0 h;il ?: d l x1;ir ?: d r "
"x2;it ?: d x1 t;ib ?: d y2 b",
"il it ir ib",
"M l x1 L x1 x1 L x1 t L x2 t L x2 x1 L r x1 L r y2 L x2 y2 L x2 b L x1 b L x1 y2 L l y2 Z"},
{"quadArrow",
"adj1 22500;adj2 22500;adj3 22500",
"a2 pin 0 adj2 50000;maxAdj1 */ a2 2 1;a1 pin 0 adj1 maxAdj1;q1 +- 100000 0 maxAdj1;maxAdj3 */ q1 1 "
"2;a3 pin 0 adj3 maxAdj3;x1 */ ss a3 100000;dx2 */ ss a2 100000;x2 +- hc 0 dx2;x5 +- hc dx2 0;dx3 */ "
"ss a1 200000;x3 +- hc 0 dx3;x4 +- hc dx3 0;x6 +- r 0 x1;y2 +- vc 0 dx2;y5 +- vc dx2 0;y3 +- vc 0 "
"dx3;y4 +- vc dx3 0;y6 +- b 0 x1;il */ dx3 x1 dx2;ir +- r 0 il",
"il y3 ir y4",
"M l vc L x1 y2 L x1 y3 L x3 y3 L x3 x1 L x2 x1 L hc t L x5 x1 L x4 x1 L x4 y3 L x6 y3 L x6 y2 L r vc"
" L x6 y5 L x6 y4 L x4 y4 L x4 y6 L x5 y6 L hc b L x2 y6 L x3 y6 L x3 y4 L x1 y4 L x1 y5 Z"},
{"quadArrowCallout",
"adj1 18515;adj2 18515;adj3 18515;adj4 48123",
"a2 pin 0 adj2 50000;maxAdj1 */ a2 2 1;a1 pin 0 adj1 maxAdj1;maxAdj3 +- 50000 0 a2;a3 pin 0 adj3 "
"maxAdj3;q2 */ a3 2 1;maxAdj4 +- 100000 0 q2;a4 pin a1 adj4 maxAdj4;dx2 */ ss a2 100000;dx3 */ ss a1 "
"200000;ah */ ss a3 100000;dx1 */ w a4 200000;dy1 */ h a4 200000;x8 +- r 0 ah;x2 +- hc 0 dx1;x7 +- hc"
" dx1 0;x3 +- hc 0 dx2;x6 +- hc dx2 0;x4 +- hc 0 dx3;x5 +- hc dx3 0;y8 +- b 0 ah;y2 +- vc 0 dy1;y7 +-"
" vc dy1 0;y3 +- vc 0 dx2;y6 +- vc dx2 0;y4 +- vc 0 dx3;y5 +- vc dx3 0",
"x2 y2 x7 y7",
"M l vc L ah y3 L ah y4 L x2 y4 L x2 y2 L x4 y2 L x4 ah L x3 ah L hc t L x6 ah L x5 ah L x5 y2 L x7 "
"y2 L x7 y4 L x8 y4 L x8 y3 L r vc L x8 y6 L x8 y5 L x7 y5 L x7 y7 L x5 y7 L x5 y8 L x6 y8 L hc b L "
"x3 y8 L x4 y8 L x4 y7 L x2 y7 L x2 y5 L ah y5 L ah y6 Z"},
{"rect",
"",
"",
"l t r b",
"M l t L r t L r b L l b Z"},
{"ribbon",
"adj1 16667;adj2 50000",
"a1 pin 0 adj1 33333;a2 pin 25000 adj2 75000;x10 +- r 0 wd8;dx2 */ w a2 200000;x2 +- hc 0 dx2;x9 +- "
"hc dx2 0;x3 +- x2 wd32 0;x8 +- x9 0 wd32;x5 +- x2 wd8 0;x6 +- x9 0 wd8;x4 +- x5 0 wd32;x7 +- x6 wd32"
" 0;y1 */ h a1 200000;y2 */ h a1 100000;y4 +- b 0 y2;y3 */ y4 1 2;hR */ h a1 400000;y5 +- b 0 hR;y6 "
"+- y2 0 hR",
"x2 y2 x9 b",
"stroke=0 M l t L x4 t A wd32 hR 3cd4 cd2 L x3 y1 A wd32 hR 3cd4 -10800000 L x8 y2 A wd32 hR cd4 "
"-10800000 L x7 y1 A wd32 hR cd4 cd2 L r t L x10 y3 L r y4 L x9 y4 L x9 y5 A wd32 hR 0 cd4 L x3 b A "
"wd32 hR cd4 cd4 L x2 y4 L l y4 L wd8 y3 Z|fill=darkenLess stroke=0 M x5 hR A wd32 hR 0 cd4 L x3 y1 A"
" wd32 hR 3cd4 -10800000 L x5 y2 Z M x6 hR A wd32 hR cd2 -5400000 L x8 y1 A wd32 hR 3cd4 cd2 L x6 y2 "
"Z|fill=none M l t L x4 t A wd32 hR 3cd4 cd2 L x3 y1 A wd32 hR 3cd4 -10800000 L x8 y2 A wd32 hR cd4 "
"-10800000 L x7 y1 A wd32 hR cd4 cd2 L r t L x10 y3 L r y4 L x9 y4 L x9 y5 A wd32 hR 0 cd4 L x3 b A "
"wd32 hR cd4 cd4 L x2 y4 L l y4 L wd8 y3 Z M x5 hR L x5 y2 M x6 y2 L x6 hR M x2 y4 L x2 y6 M x9 y6 L "
"x9 y4"},
{"ribbon2",
"adj1 16667;adj2 50000",
"a1 pin 0 adj1 33333;a2 pin 25000 adj2 75000;x10 +- r 0 wd8;dx2 */ w a2 200000;x2 +- hc 0 dx2;x9 +- "
"hc dx2 0;x3 +- x2 wd32 0;x8 +- x9 0 wd32;x5 +- x2 wd8 0;x6 +- x9 0 wd8;x4 +- x5 0 wd32;x7 +- x6 wd32"
" 0;dy1 */ h a1 200000;y1 +- b 0 dy1;dy2 */ h a1 100000;y2 +- b 0 dy2;y4 +- t dy2 0;y3 +/ y4 b 2;hR "
"*/ h a1 400000;y6 +- b 0 hR;y7 +- y1 0 hR",
"x2 t x9 y2",
"stroke=0 M l b L x4 b A wd32 hR cd4 -10800000 L x3 y1 A wd32 hR cd4 cd2 L x8 y2 A wd32 hR 3cd4 cd2 L"
" x7 y1 A wd32 hR 3cd4 -10800000 L r b L x10 y3 L r y4 L x9 y4 L x9 hR A wd32 hR 0 -5400000 L x3 t A "
"wd32 hR 3cd4 -5400000 L x2 y4 L l y4 L wd8 y3 Z|fill=darkenLess stroke=0 M x5 y6 A wd32 hR 0 "
"-5400000 L x3 y1 A wd32 hR cd4 cd2 L x5 y2 Z M x6 y6 A wd32 hR cd2 cd4 L x8 y1 A wd32 hR cd4 "
"-10800000 L x6 y2 Z|fill=none M l b L wd8 y3 L l y4 L x2 y4 L x2 hR A wd32 hR cd2 cd4 L x8 t A wd32 "
"hR 3cd4 cd4 L x9 y4 L x9 y4 L r y4 L x10 y3 L r b L x7 b A wd32 hR cd4 cd2 L x8 y1 A wd32 hR cd4 "
"-10800000 L x3 y2 A wd32 hR 3cd4 -10800000 L x4 y1 A wd32 hR 3cd4 cd2 Z M x5 y2 L x5 y6 M x6 y6 L x6"
" y2 M x2 y7 L x2 y4 M x9 y4 L x9 y7"},
{"rightArrow",
"adj1 50000;adj2 50000",
"maxAdj2 */ 100000 w ss;a1 pin 0 adj1 100000;a2 pin 0 adj2 maxAdj2;dx1 */ ss a2 100000;x1 +- r 0 "
"dx1;dy1 */ h a1 200000;y1 +- vc 0 dy1;y2 +- vc dy1 0;dx2 */ y1 dx1 hd2;x2 +- x1 dx2 0",
"l y1 x2 y2",
"M l y1 L x1 y1 L x1 t L r vc L x1 b L x1 y2 L l y2 Z"},
{"rightArrowCallout",
"adj1 25000;adj2 25000;adj3 25000;adj4 64977",
"maxAdj2 */ 50000 h ss;a2 pin 0 adj2 maxAdj2;maxAdj1 */ a2 2 1;a1 pin 0 adj1 maxAdj1;maxAdj3 */ "
"100000 w ss;a3 pin 0 adj3 maxAdj3;q2 */ a3 ss w;maxAdj4 +- 100000 0 q2;a4 pin 0 adj4 maxAdj4;dy1 */ "
"ss a2 100000;dy2 */ ss a1 200000;y1 +- vc 0 dy1;y2 +- vc 0 dy2;y3 +- vc dy2 0;y4 +- vc dy1 0;dx3 */ "
"ss a3 100000;x3 +- r 0 dx3;x2 */ w a4 100000",
"l t x2 b",
"M l t L x2 t L x2 y2 L x3 y2 L x3 y1 L r vc L x3 y4 L x3 y3 L x2 y3 L x2 b L l b Z"},
{"rightBrace",
"adj1 8333;adj2 50000",
"a2 pin 0 adj2 100000;q1 +- 100000 0 a2;q2 min q1 a2;q3 */ q2 1 2;maxAdj1 */ q3 h ss;a1 pin 0 adj1 "
"maxAdj1;y1 */ ss a1 100000;y3 */ h a2 100000;y2 +- y3 0 y1;y4 +- b 0 y1;dx1 cos wd2 2700000;dy1 sin "
"y1 2700000;ir +- l dx1 0;it +- y1 0 dy1;ib +- b dy1 y1",
"l it ir ib",
"stroke=0 M l t A wd2 y1 3cd4 cd4 L hc y2 A wd2 y1 cd2 -5400000 A wd2 y1 3cd4 -5400000 L hc y4 A wd2 "
"y1 0 cd4 Z|fill=none M l t A wd2 y1 3cd4 cd4 L hc y2 A wd2 y1 cd2 -5400000 A wd2 y1 3cd4 -5400000 L "
"hc y4 A wd2 y1 0 cd4"},
{"rightBracket",
"adj 8333",
"maxAdj */ 50000 h ss;a pin 0 adj maxAdj;y1 */ ss a 100000;y2 +- b 0 y1;dx1 cos w 2700000;dy1 sin y1 "
"2700000;ir +- l dx1 0;it +- y1 0 dy1;ib +- b dy1 y1",
"l it ir ib",
"stroke=0 M l t A w y1 3cd4 cd4 L r y2 A w y1 0 cd4 Z|fill=none M l t A w y1 3cd4 cd4 L r y2 A w y1 0"
" cd4"},
{"round1Rect",
"adj 16667",
"a pin 0 adj 50000;dx1 */ ss a 100000;x1 +- r 0 dx1;idx */ dx1 29289 100000;ir +- r 0 idx",
"l t ir b",
"M l t L x1 t A dx1 dx1 3cd4 cd4 L r b L l b Z"},
{"round2DiagRect",
"adj1 16667;adj2 0",
"a1 pin 0 adj1 50000;a2 pin 0 adj2 50000;x1 */ ss a1 100000;y1 +- b 0 x1;a */ ss a2 100000;x2 +- r 0 "
"a;dx1 */ x1 29289 100000;dx2 */ a 29289 100000;d +- dx1 0 dx2;dx ?: d dx1 dx2;ir +- r 0 dx;ib +- b 0"
" dx",
"dx dx ir ib",
"M x1 t L x2 t A a a 3cd4 cd4 L r y1 A x1 x1 0 cd4 L a b A a a cd4 cd4 L l x1 A x1 x1 cd2 cd4 Z"},
{"round2SameRect",
"adj1 16667;adj2 0",
"a1 pin 0 adj1 50000;a2 pin 0 adj2 50000;tx1 */ ss a1 100000;tx2 +- r 0 tx1;bx1 */ ss a2 100000;by1 "
"+- b 0 bx1;d +- tx1 0 bx1;tdx */ tx1 29289 100000;bdx */ bx1 29289 100000;il ?: d tdx bdx;ir +- r 0 "
"il;ib +- b 0 bdx",
"il tdx ir ib",
"M tx1 t L tx2 t A tx1 tx1 3cd4 cd4 L r by1 A bx1 bx1 0 cd4 L bx1 b A bx1 bx1 cd4 cd4 L l tx1 A tx1 "
"tx1 cd2 cd4 Z"},
{"roundRect",
"adj 16667",
"a pin 0 adj 50000;x1 */ ss a 100000;x2 +- r 0 x1;y2 +- b 0 x1;il */ x1 29289 100000;ir +- r 0 il;ib "
"+- b 0 il",
"il il ir ib",
"M l x1 A x1 x1 cd2 cd4 L x2 t A x1 x1 3cd4 cd4 L r y2 A x1 x1 0 cd4 L x1 b A x1 x1 cd4 cd4 Z"},
{"rtTriangle",
"",
"it */ h 7 12;ir */ w 7 12;ib */ h 11 12",
"wd12 it ir ib",
"M l b L l t L r b Z"},
{"smileyFace",
"adj 4653",
"a pin -4653 adj 4653;x1 */ w 4969 21699;x2 */ w 6215 21600;x3 */ w 13135 21600;x4 */ w 16640 "
"21600;y1 */ h 7570 21600;y3 */ h 16515 21600;dy2 */ h a 100000;y2 +- y3 0 dy2;y4 +- y3 dy2 0;dy3 */ "
"h a 50000;y5 +- y4 dy3 0;idx cos wd2 2700000;idy sin hd2 2700000;il +- hc 0 idx;ir +- hc idx 0;it +-"
" vc 0 idy;ib +- vc idy 0;wR */ w 1125 21600;hR */ h 1125 21600",
"il it ir ib",
"stroke=0 M l vc A wd2 hd2 cd2 21600000 Z|fill=darkenLess M x2 y1 A wR hR cd2 21600000 M x3 y1 A wR "
"hR cd2 21600000|fill=none M x1 y2 Q hc y5 x4 y2|fill=none M l vc A wd2 hd2 cd2 21600000 Z"},
{"snip1Rect",
"adj 16667",
"a pin 0 adj 50000;dx1 */ ss a 100000;x1 +- r 0 dx1;it */ dx1 1 2;ir +/ x1 r 2",
"l it ir b",
"M l t L x1 t L r dx1 L r b L l b Z"},
{"snip2DiagRect",
"adj1 0;adj2 16667",
"a1 pin 0 adj1 50000;a2 pin 0 adj2 50000;lx1 */ ss a1 100000;lx2 +- r 0 lx1;ly1 +- b 0 lx1;rx1 */ ss "
"a2 100000;rx2 +- r 0 rx1;ry1 +- b 0 rx1;d +- lx1 0 rx1;dx ?: d lx1 rx1;il */ dx 1 2;ir +- r 0 il;ib "
"+- b 0 il",
"il il ir ib",
"M lx1 t L rx2 t L r rx1 L r ly1 L lx2 b L rx1 b L l ry1 L l lx1 Z"},
{"snip2SameRect",
"adj1 16667;adj2 0",
"a1 pin 0 adj1 50000;a2 pin 0 adj2 50000;tx1 */ ss a1 100000;tx2 +- r 0 tx1;bx1 */ ss a2 100000;bx2 "
"+- r 0 bx1;by1 +- b 0 bx1;d +- tx1 0 bx1;dx ?: d tx1 bx1;il */ dx 1 2;ir +- r 0 il;it */ tx1 1 2;ib "
"+/ by1 b 2",
"il it ir ib",
"M tx1 t L tx2 t L r tx1 L r by1 L bx2 b L bx1 b L l by1 L l tx1 Z"},
{"snipRoundRect",
"adj1 16667;adj2 16667",
"a1 pin 0 adj1 50000;a2 pin 0 adj2 50000;x1 */ ss a1 100000;dx2 */ ss a2 100000;x2 +- r 0 dx2;il */ "
"x1 29289 100000;ir +/ x2 r 2",
"il il ir b",
"M x1 t L x2 t L r dx2 L r b L l b L l x1 A x1 x1 cd2 cd4 Z"},
{"squareTabs",
"",
"md mod w h 0;dx */ 1 md 20;y1 +- 0 b dx;x1 +- 0 r dx",
"dx dx x1 y1",
"M l t L dx t L dx dx L l dx Z|M l y1 L dx y1 L dx b L l b Z|M x1 t L r t L r dx L x1 dx Z|M x1 y1 L "
"r y1 L r b L x1 b Z"},
{"star10",
"adj 42533;hf 105146",
"a pin 0 adj 50000;swd2 */ wd2 hf 100000;dx1 */ swd2 95106 100000;dx2 */ swd2 58779 100000;x1 +- hc 0"
" dx1;x2 +- hc 0 dx2;x3 +- hc dx2 0;x4 +- hc dx1 0;dy1 */ hd2 80902 100000;dy2 */ hd2 30902 100000;y1"
" +- vc 0 dy1;y2 +- vc 0 dy2;y3 +- vc dy2 0;y4 +- vc dy1 0;iwd2 */ swd2 a 50000;ihd2 */ hd2 a "
"50000;sdx1 */ iwd2 80902 100000;sdx2 */ iwd2 30902 100000;sdy1 */ ihd2 95106 100000;sdy2 */ ihd2 "
"58779 100000;sx1 +- hc 0 iwd2;sx2 +- hc 0 sdx1;sx3 +- hc 0 sdx2;sx4 +- hc sdx2 0;sx5 +- hc sdx1 "
"0;sx6 +- hc iwd2 0;sy1 +- vc 0 sdy1;sy2 +- vc 0 sdy2;sy3 +- vc sdy2 0;sy4 +- vc sdy1 0",
"sx2 sy2 sx5 sy3",
"M x1 y2 L sx2 sy2 L x2 y1 L sx3 sy1 L hc t L sx4 sy1 L x3 y1 L sx5 sy2 L x4 y2 L sx6 vc L x4 y3 L "
"sx5 sy3 L x3 y4 L sx4 sy4 L hc b L sx3 sy4 L x2 y4 L sx2 sy3 L x1 y3 L sx1 vc Z"},
{"star12",
"adj 37500",
"a pin 0 adj 50000;dx1 cos wd2 1800000;dy1 sin hd2 3600000;x1 +- hc 0 dx1;x3 */ w 3 4;x4 +- hc dx1 "
"0;y1 +- vc 0 dy1;y3 */ h 3 4;y4 +- vc dy1 0;iwd2 */ wd2 a 50000;ihd2 */ hd2 a 50000;sdx1 cos iwd2 "
"900000;sdx2 cos iwd2 2700000;sdx3 cos iwd2 4500000;sdy1 sin ihd2 4500000;sdy2 sin ihd2 2700000;sdy3 "
"sin ihd2 900000;sx1 +- hc 0 sdx1;sx2 +- hc 0 sdx2;sx3 +- hc 0 sdx3;sx4 +- hc sdx3 0;sx5 +- hc sdx2 "
"0;sx6 +- hc sdx1 0;sy1 +- vc 0 sdy1;sy2 +- vc 0 sdy2;sy3 +- vc 0 sdy3;sy4 +- vc sdy3 0;sy5 +- vc "
"sdy2 0;sy6 +- vc sdy1 0",
"sx2 sy2 sx5 sy5",
"M l vc L sx1 sy3 L x1 hd4 L sx2 sy2 L wd4 y1 L sx3 sy1 L hc t L sx4 sy1 L x3 y1 L sx5 sy2 L x4 hd4 L"
" sx6 sy3 L r vc L sx6 sy4 L x4 y3 L sx5 sy5 L x3 y4 L sx4 sy6 L hc b L sx3 sy6 L wd4 y4 L sx2 sy5 L "
"x1 y3 L sx1 sy4 Z"},
{"star16",
"adj 37500",
"a pin 0 adj 50000;dx1 */ wd2 92388 100000;dx2 */ wd2 70711 100000;dx3 */ wd2 38268 100000;dy1 */ hd2"
" 92388 100000;dy2 */ hd2 70711 100000;dy3 */ hd2 38268 100000;x1 +- hc 0 dx1;x2 +- hc 0 dx2;x3 +- hc"
" 0 dx3;x4 +- hc dx3 0;x5 +- hc dx2 0;x6 +- hc dx1 0;y1 +- vc 0 dy1;y2 +- vc 0 dy2;y3 +- vc 0 dy3;y4 "
"+- vc dy3 0;y5 +- vc dy2 0;y6 +- vc dy1 0;iwd2 */ wd2 a 50000;ihd2 */ hd2 a 50000;sdx1 */ iwd2 98079"
" 100000;sdx2 */ iwd2 83147 100000;sdx3 */ iwd2 55557 100000;sdx4 */ iwd2 19509 100000;sdy1 */ ihd2 "
"98079 100000;sdy2 */ ihd2 83147 100000;sdy3 */ ihd2 55557 100000;sdy4 */ ihd2 19509 100000;sx1 +- hc"
" 0 sdx1;sx2 +- hc 0 sdx2;sx3 +- hc 0 sdx3;sx4 +- hc 0 sdx4;sx5 +- hc sdx4 0;sx6 +- hc sdx3 0;sx7 +- "
"hc sdx2 0;sx8 +- hc sdx1 0;sy1 +- vc 0 sdy1;sy2 +- vc 0 sdy2;sy3 +- vc 0 sdy3;sy4 +- vc 0 sdy4;sy5 "
"+- vc sdy4 0;sy6 +- vc sdy3 0;sy7 +- vc sdy2 0;sy8 +- vc sdy1 0;idx cos iwd2 2700000;idy sin ihd2 "
"2700000;il +- hc 0 idx;it +- vc 0 idy;ir +- hc idx 0;ib +- vc idy 0",
"il it ir ib",
"M l vc L sx1 sy4 L x1 y3 L sx2 sy3 L x2 y2 L sx3 sy2 L x3 y1 L sx4 sy1 L hc t L sx5 sy1 L x4 y1 L "
"sx6 sy2 L x5 y2 L sx7 sy3 L x6 y3 L sx8 sy4 L r vc L sx8 sy5 L x6 y4 L sx7 sy6 L x5 y5 L sx6 sy7 L "
"x4 y6 L sx5 sy8 L hc b L sx4 sy8 L x3 y6 L sx3 sy7 L x2 y5 L sx2 sy6 L x1 y4 L sx1 sy5 Z"},
{"star24",
"adj 37500",
"a pin 0 adj 50000;dx1 cos wd2 900000;dx2 cos wd2 1800000;dx3 cos wd2 2700000;dx4 val wd4;dx5 cos wd2"
" 4500000;dy1 sin hd2 4500000;dy2 sin hd2 3600000;dy3 sin hd2 2700000;dy4 val hd4;dy5 sin hd2 "
"900000;x1 +- hc 0 dx1;x2 +- hc 0 dx2;x3 +- hc 0 dx3;x4 +- hc 0 dx4;x5 +- hc 0 dx5;x6 +- hc dx5 0;x7 "
"+- hc dx4 0;x8 +- hc dx3 0;x9 +- hc dx2 0;x10 +- hc dx1 0;y1 +- vc 0 dy1;y2 +- vc 0 dy2;y3 +- vc 0 "
"dy3;y4 +- vc 0 dy4;y5 +- vc 0 dy5;y6 +- vc dy5 0;y7 +- vc dy4 0;y8 +- vc dy3 0;y9 +- vc dy2 0;y10 +-"
" vc dy1 0;iwd2 */ wd2 a 50000;ihd2 */ hd2 a 50000;sdx1 */ iwd2 99144 100000;sdx2 */ iwd2 92388 "
"100000;sdx3 */ iwd2 79335 100000;sdx4 */ iwd2 60876 100000;sdx5 */ iwd2 38268 100000;sdx6 */ iwd2 "
"13053 100000;sdy1 */ ihd2 99144 100000;sdy2 */ ihd2 92388 100000;sdy3 */ ihd2 79335 100000;sdy4 */ "
"ihd2 60876 100000;sdy5 */ ihd2 38268 100000;sdy6 */ ihd2 13053 100000;sx1 +- hc 0 sdx1;sx2 +- hc 0 "
"sdx2;sx3 +- hc 0 sdx3;sx4 +- hc 0 sdx4;sx5 +- hc 0 sdx5;sx6 +- hc 0 sdx6;sx7 +- hc sdx6 0;sx8 +- hc "
"sdx5 0;sx9 +- hc sdx4 0;sx10 +- hc sdx3 0;sx11 +- hc sdx2 0;sx12 +- hc sdx1 0;sy1 +- vc 0 sdy1;sy2 "
"+- vc 0 sdy2;sy3 +- vc 0 sdy3;sy4 +- vc 0 sdy4;sy5 +- vc 0 sdy5;sy6 +- vc 0 sdy6;sy7 +- vc sdy6 "
"0;sy8 +- vc sdy5 0;sy9 +- vc sdy4 0;sy10 +- vc sdy3 0;sy11 +- vc sdy2 0;sy12 +- vc sdy1 0;idx cos "
"iwd2 2700000;idy sin ihd2 2700000;il +- hc 0 idx;it +- vc 0 idy;ir +- hc idx 0;ib +- vc idy 0",
"il it ir ib",
"M l vc L sx1 sy6 L x1 y5 L sx2 sy5 L x2 y4 L sx3 sy4 L x3 y3 L sx4 sy3 L x4 y2 L sx5 sy2 L x5 y1 L "
"sx6 sy1 L hc t L sx7 sy1 L x6 y1 L sx8 sy2 L x7 y2 L sx9 sy3 L x8 y3 L sx10 sy4 L x9 y4 L sx11 sy5 L"
" x10 y5 L sx12 sy6 L r vc L sx12 sy7 L x10 y6 L sx11 sy8 L x9 y7 L sx10 sy9 L x8 y8 L sx9 sy10 L x7 "
"y9 L sx8 sy11 L x6 y10 L sx7 sy12 L hc b L sx6 sy12 L x5 y10 L sx5 sy11 L x4 y9 L sx4 sy10 L x3 y8 L"
" sx3 sy9 L x2 y7 L sx2 sy8 L x1 y6 L sx1 sy7 Z"},
{"star32",
"adj 37500",
"a pin 0 adj 50000;dx1 */ wd2 98079 100000;dx2 */ wd2 92388 100000;dx3 */ wd2 83147 100000;dx4 cos "
"wd2 2700000;dx5 */ wd2 55557 100000;dx6 */ wd2 38268 100000;dx7 */ wd2 19509 100000;dy1 */ hd2 98079"
" 100000;dy2 */ hd2 92388 100000;dy3 */ hd2 83147 100000;dy4 sin hd2 2700000;dy5 */ hd2 55557 "
"100000;dy6 */ hd2 38268 100000;dy7 */ hd2 19509 100000;x1 +- hc 0 dx1;x2 +- hc 0 dx2;x3 +- hc 0 "
"dx3;x4 +- hc 0 dx4;x5 +- hc 0 dx5;x6 +- hc 0 dx6;x7 +- hc 0 dx7;x8 +- hc dx7 0;x9 +- hc dx6 0;x10 +-"
" hc dx5 0;x11 +- hc dx4 0;x12 +- hc dx3 0;x13 +- hc dx2 0;x14 +- hc dx1 0;y1 +- vc 0 dy1;y2 +- vc 0 "
"dy2;y3 +- vc 0 dy3;y4 +- vc 0 dy4;y5 +- vc 0 dy5;y6 +- vc 0 dy6;y7 +- vc 0 dy7;y8 +- vc dy7 0;y9 +- "
"vc dy6 0;y10 +- vc dy5 0;y11 +- vc dy4 0;y12 +- vc dy3 0;y13 +- vc dy2 0;y14 +- vc dy1 0;iwd2 */ wd2"
" a 50000;ihd2 */ hd2 a 50000;sdx1 */ iwd2 99518 100000;sdx2 */ iwd2 95694 100000;sdx3 */ iwd2 88192 "
"100000;sdx4 */ iwd2 77301 100000;sdx5 */ iwd2 63439 100000;sdx6 */ iwd2 47140 100000;sdx7 */ iwd2 "
"29028 100000;sdx8 */ iwd2 9802 100000;sdy1 */ ihd2 99518 100000;sdy2 */ ihd2 95694 100000;sdy3 */ "
"ihd2 88192 100000;sdy4 */ ihd2 77301 100000;sdy5 */ ihd2 63439 100000;sdy6 */ ihd2 47140 100000;sdy7"
" */ ihd2 29028 100000;sdy8 */ ihd2 9802 100000;sx1 +- hc 0 sdx1;sx2 +- hc 0 sdx2;sx3 +- hc 0 "
"sdx3;sx4 +- hc 0 sdx4;sx5 +- hc 0 sdx5;sx6 +- hc 0 sdx6;sx7 +- hc 0 sdx7;sx8 +- hc 0 sdx8;sx9 +- hc "
"sdx8 0;sx10 +- hc sdx7 0;sx11 +- hc sdx6 0;sx12 +- hc sdx5 0;sx13 +- hc sdx4 0;sx14 +- hc sdx3 "
"0;sx15 +- hc sdx2 0;sx16 +- hc sdx1 0;sy1 +- vc 0 sdy1;sy2 +- vc 0 sdy2;sy3 +- vc 0 sdy3;sy4 +- vc 0"
" sdy4;sy5 +- vc 0 sdy5;sy6 +- vc 0 sdy6;sy7 +- vc 0 sdy7;sy8 +- vc 0 sdy8;sy9 +- vc sdy8 0;sy10 +- "
"vc sdy7 0;sy11 +- vc sdy6 0;sy12 +- vc sdy5 0;sy13 +- vc sdy4 0;sy14 +- vc sdy3 0;sy15 +- vc sdy2 "
"0;sy16 +- vc sdy1 0;idx cos iwd2 2700000;idy sin ihd2 2700000;il +- hc 0 idx;it +- vc 0 idy;ir +- hc"
" idx 0;ib +- vc idy 0",
"il it ir ib",
"M l vc L sx1 sy8 L x1 y7 L sx2 sy7 L x2 y6 L sx3 sy6 L x3 y5 L sx4 sy5 L x4 y4 L sx5 sy4 L x5 y3 L "
"sx6 sy3 L x6 y2 L sx7 sy2 L x7 y1 L sx8 sy1 L hc t L sx9 sy1 L x8 y1 L sx10 sy2 L x9 y2 L sx11 sy3 L"
" x10 y3 L sx12 sy4 L x11 y4 L sx13 sy5 L x12 y5 L sx14 sy6 L x13 y6 L sx15 sy7 L x14 y7 L sx16 sy8 L"
" r vc L sx16 sy9 L x14 y8 L sx15 sy10 L x13 y9 L sx14 sy11 L x12 y10 L sx13 sy12 L x11 y11 L sx12 "
"sy13 L x10 y12 L sx11 sy14 L x9 y13 L sx10 sy15 L x8 y14 L sx9 sy16 L hc b L sx8 sy16 L x7 y14 L sx7"
" sy15 L x6 y13 L sx6 sy14 L x5 y12 L sx5 sy13 L x4 y11 L sx4 sy12 L x3 y10 L sx3 sy11 L x2 y9 L sx2 "
"sy10 L x1 y8 L sx1 sy9 Z"},
{"star4",
"adj 12500",
"a pin 0 adj 50000;iwd2 */ wd2 a 50000;ihd2 */ hd2 a 50000;sdx cos iwd2 2700000;sdy sin ihd2 "
"2700000;sx1 +- hc 0 sdx;sx2 +- hc sdx 0;sy1 +- vc 0 sdy;sy2 +- vc sdy 0",
"sx1 sy1 sx2 sy2",
"M l vc L sx1 sy1 L hc t L sx2 sy1 L r vc L sx2 sy2 L hc b L sx1 sy2 Z"},
{"star5",
"adj 19098;hf 105146;vf 110557",
"a pin 0 adj 50000;swd2 */ wd2 hf 100000;shd2 */ hd2 vf 100000;svc */ vc vf 100000;dx1 cos swd2 "
"1080000;dx2 cos swd2 18360000;dy1 sin shd2 1080000;dy2 sin shd2 18360000;x1 +- hc 0 dx1;x2 +- hc 0 "
"dx2;x3 +- hc dx2 0;x4 +- hc dx1 0;y1 +- svc 0 dy1;y2 +- svc 0 dy2;iwd2 */ swd2 a 50000;ihd2 */ shd2 "
"a 50000;sdx1 cos iwd2 20520000;sdx2 cos iwd2 3240000;sdy1 sin ihd2 3240000;sdy2 sin ihd2 "
"20520000;sx1 +- hc 0 sdx1;sx2 +- hc 0 sdx2;sx3 +- hc sdx2 0;sx4 +- hc sdx1 0;sy1 +- svc 0 sdy1;sy2 "
"+- svc 0 sdy2;sy3 +- svc ihd2 0",
"sx1 sy1 sx4 sy3",
"M x1 y1 L sx2 sy1 L hc t L sx3 sy1 L x4 y1 L sx4 sy2 L x3 y2 L hc sy3 L x2 y2 L sx1 sy2 Z"},
{"star6",
"adj 28868;hf 115470",
"a pin 0 adj 50000;swd2 */ wd2 hf 100000;dx1 cos swd2 1800000;x1 +- hc 0 dx1;x2 +- hc dx1 0;y2 +- vc "
"hd4 0;iwd2 */ swd2 a 50000;ihd2 */ hd2 a 50000;sdx2 */ iwd2 1 2;sx1 +- hc 0 iwd2;sx2 +- hc 0 "
"sdx2;sx3 +- hc sdx2 0;sx4 +- hc iwd2 0;sdy1 sin ihd2 3600000;sy1 +- vc 0 sdy1;sy2 +- vc sdy1 0",
"sx1 sy1 sx4 sy2",
"M x1 hd4 L sx2 sy1 L hc t L sx3 sy1 L x2 hd4 L sx4 vc L x2 y2 L sx3 sy2 L hc b L sx2 sy2 L x1 y2 L "
"sx1 vc Z"},
{"star7",
"adj 34601;hf 102572;vf 105210",
"a pin 0 adj 50000;swd2 */ wd2 hf 100000;shd2 */ hd2 vf 100000;svc */ vc vf 100000;dx1 */ swd2 97493 "
"100000;dx2 */ swd2 78183 100000;dx3 */ swd2 43388 100000;dy1 */ shd2 62349 100000;dy2 */ shd2 22252 "
"100000;dy3 */ shd2 90097 100000;x1 +- hc 0 dx1;x2 +- hc 0 dx2;x3 +- hc 0 dx3;x4 +- hc dx3 0;x5 +- hc"
" dx2 0;x6 +- hc dx1 0;y1 +- svc 0 dy1;y2 +- svc dy2 0;y3 +- svc dy3 0;iwd2 */ swd2 a 50000;ihd2 */ "
"shd2 a 50000;sdx1 */ iwd2 97493 100000;sdx2 */ iwd2 78183 100000;sdx3 */ iwd2 43388 100000;sx1 +- hc"
" 0 sdx1;sx2 +- hc 0 sdx2;sx3 +- hc 0 sdx3;sx4 +- hc sdx3 0;sx5 +- hc sdx2 0;sx6 +- hc sdx1 0;sdy1 */"
" ihd2 90097 100000;sdy2 */ ihd2 22252 100000;sdy3 */ ihd2 62349 100000;sy1 +- svc 0 sdy1;sy2 +- svc "
"0 sdy2;sy3 +- svc sdy3 0;sy4 +- svc ihd2 0",
"sx2 sy1 sx5 sy3",
"M x1 y2 L sx1 sy2 L x2 y1 L sx3 sy1 L hc t L sx4 sy1 L x5 y1 L sx6 sy2 L x6 y2 L sx5 sy3 L x4 y3 L "
"hc sy4 L x3 y3 L sx2 sy3 Z"},
{"star8",
"adj 37500",
"a pin 0 adj 50000;dx1 cos wd2 2700000;x1 +- hc 0 dx1;x2 +- hc dx1 0;dy1 sin hd2 2700000;y1 +- vc 0 "
"dy1;y2 +- vc dy1 0;iwd2 */ wd2 a 50000;ihd2 */ hd2 a 50000;sdx1 */ iwd2 92388 100000;sdx2 */ iwd2 "
"38268 100000;sdy1 */ ihd2 92388 100000;sdy2 */ ihd2 38268 100000;sx1 +- hc 0 sdx1;sx2 +- hc 0 "
"sdx2;sx3 +- hc sdx2 0;sx4 +- hc sdx1 0;sy1 +- vc 0 sdy1;sy2 +- vc 0 sdy2;sy3 +- vc sdy2 0;sy4 +- vc "
"sdy1 0",
"sx1 sy1 sx4 sy4",
"M l vc L sx1 sy2 L x1 y1 L sx2 sy1 L hc t L sx3 sy1 L x2 y1 L sx4 sy2 L r vc L sx4 sy3 L x2 y2 L sx3"
" sy4 L hc b L sx2 sy4 L x1 y2 L sx1 sy3 Z"},
{"straightConnector1",
"",
"",
"l t r b",
"fill=none M l t L r b"},
{"stripedRightArrow",
"adj1 50000;adj2 50000",
"maxAdj2 */ 84375 w ss;a1 pin 0 adj1 100000;a2 pin 0 adj2 maxAdj2;x4 */ ss 5 32;dx5 */ ss a2 "
"100000;x5 +- r 0 dx5;dy1 */ h a1 200000;y1 +- vc 0 dy1;y2 +- vc dy1 0;dx6 */ dy1 dx5 hd2;x6 +- r 0 "
"dx6",
"x4 y1 x6 y2",
"M l y1 L ssd32 y1 L ssd32 y2 L l y2 Z M ssd16 y1 L ssd8 y1 L ssd8 y2 L ssd16 y2 Z M x4 y1 L x5 y1 L "
"x5 t L r vc L x5 b L x5 y2 L x4 y2 Z"},
{"sun",
"adj 25000",
"a pin 12500 adj 46875;g0 +- 50000 0 a;g1 */ g0 30274 32768;g2 */ g0 12540 32768;g5 +- 50000 0 g1;g6 "
"+- 50000 0 g2;g7 */ g0 23170 32768;g8 +- 50000 g7 0;g9 +- 50000 0 g7;g10 */ g5 3 4;g11 */ g6 3 4;g12"
" +- g10 3662 0;g13 +- g11 3662 0;g14 +- g11 12500 0;g15 +- 100000 0 g10;g16 +- 100000 0 g12;g17 +- "
"100000 0 g13;g18 +- 100000 0 g14;ox1 */ w 18436 21600;oy1 */ h 3163 21600;ox2 */ w 3163 21600;oy2 */"
" h 18436 21600;x8 */ w g8 100000;x9 */ w g9 100000;x10 */ w g10 100000;x12 */ w g12 100000;x13 */ w "
"g13 100000;x14 */ w g14 100000;x15 */ w g15 100000;x16 */ w g16 100000;x17 */ w g17 100000;x18 */ w "
"g18 100000;x19 */ w a 100000;wR */ w g0 100000;hR */ h g0 100000;y8 */ h g8 100000;y9 */ h g9 "
"100000;y10 */ h g10 100000;y12 */ h g12 100000;y13 */ h g13 100000;y14 */ h g14 100000;y15 */ h g15 "
"100000;y16 */ h g16 100000;y17 */ h g17 100000;y18 */ h g18 100000",
"x9 y9 x8 y8",
"M r vc L x15 y18 L x15 y14 Z M ox1 oy1 L x16 y13 L x17 y12 Z M hc t L x18 y10 L x14 y10 Z M ox2 oy1 "
"L x13 y12 L x12 y13 Z M l vc L x10 y14 L x10 y18 Z M ox2 oy2 L x12 y17 L x13 y16 Z M hc b L x14 y15 "
"L x18 y15 Z M ox1 oy2 L x17 y16 L x16 y17 Z M x19 vc A wR hR cd2 21600000 Z"},
{"swooshArrow",
"adj1 25000;adj2 16667",
"a1 pin 1 adj1 75000;maxAdj2 */ 70000 w ss;a2 pin 0 adj2 maxAdj2;ad1 */ h a1 100000;ad2 */ ss a2 "
"100000;xB +- r 0 ad2;yB +- t ssd8 0;alfa */ cd4 1 14;dx0 tan ssd8 alfa;xC +- xB 0 dx0;dx1 tan ad1 "
"alfa;yF +- yB ad1 0;xF +- xB dx1 0;xE +- xF dx0 0;yE +- yF ssd8 0;dy2 +- yE 0 t;dy22 */ dy2 1 2;dy3 "
"*/ h 1 20;yD +- t dy22 dy3;dy4 */ hd6 1 1;yP1 +- hd6 dy4 0;xP1 val wd6;dy5 */ hd6 1 2;yP2 +- yF dy5 "
"0;xP2 val wd4",
"l t r b",
"M l b Q xP1 yP1 xB yB L xC t L r yD L xE yE L xF yF Q xP2 yP2 l b Z"},
{"teardrop",
"adj 100000",
"a pin 0 adj 200000;r2 sqrt 2;tw */ wd2 r2 1;th */ hd2 r2 1;sw */ tw a 100000;sh */ th a 100000;dx1 "
"cos sw 2700000;dy1 sin sh 2700000;x1 +- hc dx1 0;y1 +- vc 0 dy1;x2 +/ hc x1 2;y2 +/ vc y1 2;idx cos "
"wd2 2700000;idy sin hd2 2700000;il +- hc 0 idx;ir +- hc idx 0;it +- vc 0 idy;ib +- vc idy 0",
"il it ir ib",
"M l vc A wd2 hd2 cd2 cd4 Q x2 t x1 y1 Q r y2 r vc A wd2 hd2 0 cd4 A wd2 hd2 cd4 cd4 Z"},
{"trapezoid",
"adj 25000",
"maxAdj */ 50000 w ss;a pin 0 adj maxAdj;x2 */ ss a 100000;x3 +- r 0 x2;il */ wd3 a maxAdj;it */ hd3 "
"a maxAdj;ir +- r 0 il",
"il it ir b",
"M l b L x2 t L x3 t L r b Z"},
{"triangle",
"adj 50000",
"a pin 0 adj 100000;x1 */ w a 200000;x2 */ w a 100000;x3 +- x1 wd2 0",
"x1 vc x3 b",
"M l b L x2 t L r b Z"},
{"upArrow",
"adj1 50000;adj2 50000",
"maxAdj2 */ 100000 h ss;a1 pin 0 adj1 100000;a2 pin 0 adj2 maxAdj2;dy2 */ ss a2 100000;y2 +- t dy2 "
"0;dx1 */ w a1 200000;x1 +- hc 0 dx1;x2 +- hc dx1 0;dy1 */ x1 dy2 wd2;y1 +- y2 0 dy1",
"x1 y1 x2 b",
"M l y2 L hc t L r y2 L x2 y2 L x2 b L x1 b L x1 y2 Z"},
{"upArrowCallout",
"adj1 25000;adj2 25000;adj3 25000;adj4 64977",
"maxAdj2 */ 50000 w ss;a2 pin 0 adj2 maxAdj2;maxAdj1 */ a2 2 1;a1 pin 0 adj1 maxAdj1;maxAdj3 */ "
"100000 h ss;a3 pin 0 adj3 maxAdj3;q2 */ a3 ss h;maxAdj4 +- 100000 0 q2;a4 pin 0 adj4 maxAdj4;dx1 */ "
"ss a2 100000;dx2 */ ss a1 200000;x1 +- hc 0 dx1;x2 +- hc 0 dx2;x3 +- hc dx2 0;x4 +- hc dx1 0;y1 */ "
"ss a3 100000;dy2 */ h a4 100000;y2 +- b 0 dy2",
"l y2 r b",
"M l y2 L x2 y2 L x2 y1 L x1 y1 L hc t L x4 y1 L x3 y1 L x3 y2 L r y2 L r b L l b Z"},
{"upDownArrow",
"adj1 50000;adj2 50000",
"maxAdj2 */ 50000 h ss;a1 pin 0 adj1 100000;a2 pin 0 adj2 maxAdj2;y2 */ ss a2 100000;y3 +- b 0 y2;dx1"
" */ w a1 200000;x1 +- hc 0 dx1;x2 +- hc dx1 0;dy1 */ x1 y2 wd2;y1 +- y2 0 dy1;y4 +- y3 dy1 0",
"x1 y1 x2 y4",
"M l y2 L hc t L r y2 L x2 y2 L x2 y3 L r y3 L hc b L l y3 L x1 y3 L x1 y2 Z"},
{"upDownArrowCallout",
"adj1 25000;adj2 25000;adj3 25000;adj4 48123",
"maxAdj2 */ 50000 w ss;a2 pin 0 adj2 maxAdj2;maxAdj1 */ a2 2 1;a1 pin 0 adj1 maxAdj1;maxAdj3 */ 50000"
" h ss;a3 pin 0 adj3 maxAdj3;q2 */ a3 ss hd2;maxAdj4 +- 100000 0 q2;a4 pin 0 adj4 maxAdj4;dx1 */ ss "
"a2 100000;dx2 */ ss a1 200000;x1 +- hc 0 dx1;x2 +- hc 0 dx2;x3 +- hc dx2 0;x4 +- hc dx1 0;y1 */ ss "
"a3 100000;y4 +- b 0 y1;dy2 */ h a4 200000;y2 +- vc 0 dy2;y3 +- vc dy2 0",
"l y2 r y3",
"M l y2 L x2 y2 L x2 y1 L x1 y1 L hc t L x4 y1 L x3 y1 L x3 y2 L r y2 L r y3 L x3 y3 L x3 y4 L x4 y4 "
"L hc b L x1 y4 L x2 y4 L x2 y3 L l y3 Z"},
{"uturnArrow",
"adj1 25000;adj2 25000;adj3 25000;adj4 43750;adj5 75000",
"a2 pin 0 adj2 25000;maxAdj1 */ a2 2 1;a1 pin 0 adj1 maxAdj1;q2 */ a1 ss h;q3 +- 100000 0 q2;maxAdj3 "
"*/ q3 h ss;a3 pin 0 adj3 maxAdj3;q1 +- a3 a1 0;minAdj5 */ q1 ss h;a5 pin minAdj5 adj5 100000;th */ "
"ss a1 100000;aw2 */ ss a2 100000;th2 */ th 1 2;dh2 +- aw2 0 th2;y5 */ h a5 100000;ah */ ss a3 "
"100000;y4 +- y5 0 ah;x9 +- r 0 dh2;bw */ x9 1 2;bs min bw y4;maxAdj4 */ bs 100000 ss;a4 pin 0 adj4 "
"maxAdj4;bd */ ss a4 100000;bd3 +- bd 0 th;bd2 max bd3 0;x3 +- th bd2 0;x8 +- r 0 aw2;x6 +- x8 0 "
"aw2;x7 +- x6 dh2 0;x4 +- x9 0 bd",
"l t r b",
"M l b L l bd A bd bd cd2 cd4 L x4 t A bd bd 3cd4 cd4 L x9 y4 L r y4 L x8 y5 L x6 y4 L x7 y4 L x7 x3 "
"A bd2 bd2 0 -5400000 L x3 th A bd2 bd2 3cd4 -5400000 L th b Z"},
{"verticalScroll",
"adj 12500",
"a pin 0 adj 25000;ch */ ss a 100000;ch2 */ ch 1 2;ch4 */ ch 1 4;x3 +- ch ch2 0;x4 +- ch ch 0;x6 +- r"
" 0 ch;x7 +- r 0 ch2;y3 +- b 0 ch;y4 +- b 0 ch2",
"ch ch x6 y4",
"stroke=0 M ch2 b A ch2 ch2 cd4 -5400000 L ch2 y4 A ch4 ch4 cd4 -10800000 L ch y3 L ch ch2 A ch2 ch2 "
"cd2 cd4 L x7 t A ch2 ch2 3cd4 cd2 L x6 ch L x6 y4 A ch2 ch2 0 cd4 Z M x4 ch2 A ch2 ch2 0 cd4 A ch4 "
"ch4 cd4 cd2 Z|fill=darkenLess stroke=0 M x4 ch2 A ch2 ch2 0 cd4 A ch4 ch4 cd4 cd2 Z M ch y4 A ch2 "
"ch2 0 3cd4 A ch4 ch4 3cd4 cd2 Z|fill=none M ch y3 L ch ch2 A ch2 ch2 cd2 cd4 L x7 t A ch2 ch2 3cd4 "
"cd2 L x6 ch L x6 y4 A ch2 ch2 0 cd4 L ch2 b A ch2 ch2 cd4 cd2 Z M x3 t A ch2 ch2 3cd4 cd2 A ch4 ch4 "
"cd4 cd2 L x4 ch2 M x6 ch L x3 ch M ch2 y3 A ch4 ch4 3cd4 cd2 L ch y4 M ch2 b A ch2 ch2 cd4 -5400000 "
"L ch y3"},
{"wave",
"adj1 12500;adj2 0",
"a1 pin 0 adj1 20000;a2 pin -10000 adj2 10000;y1 */ h a1 100000;dy2 */ y1 10 3;y2 +- y1 0 dy2;y3 +- "
"y1 dy2 0;y4 +- b 0 y1;y5 +- y4 0 dy2;y6 +- y4 dy2 0;of2 */ w a2 50000;dx2 ?: of2 0 of2;x2 +- l 0 "
"dx2;dx5 ?: of2 of2 0;x5 +- r 0 dx5;dx3 +/ dx2 x5 3;x3 +- x2 dx3 0;x4 +/ x3 x5 2;x6 +- l dx5 0;x10 +-"
" r dx2 0;x7 +- x6 dx3 0;x8 +/ x7 x10 2;il max x2 x6;ir min x5 x10;it */ h a1 50000;ib +- b 0 it",
"il it ir ib",
"M x2 y1 C x3 y2 x4 y3 x5 y1 L x10 y4 C x8 y6 x7 y5 x6 y4 Z"},
{"wedgeEllipseCallout",
"adj1 -20833;adj2 62500",
"dxPos */ w adj1 100000;dyPos */ h adj2 100000;xPos +- hc dxPos 0;yPos +- vc dyPos 0;sdx */ dxPos h "
"1;sdy */ dyPos w 1;pang at2 sdx sdy;stAng +- pang 660000 0;enAng +- pang 0 660000;dx1 cos wd2 "
"stAng;dy1 sin hd2 stAng;x1 +- hc dx1 0;y1 +- vc dy1 0;dx2 cos wd2 enAng;dy2 sin hd2 enAng;stAng1 at2"
" dx1 dy1;enAng1 at2 dx2 dy2;swAng1 +- enAng1 0 stAng1;swAng2 +- swAng1 21600000 0;swAng ?: swAng1 "
"swAng1 swAng2;idx cos wd2 2700000;idy sin hd2 2700000;il +- hc 0 idx;ir +- hc idx 0;it +- vc 0 "
"idy;ib +- vc idy 0",
"il it ir ib",
"M xPos yPos L x1 y1 A wd2 hd2 stAng1 swAng Z"},
{"wedgeRectCallout",
"adj1 -20833;adj2 62500",
"dxPos */ w adj1 100000;dyPos */ h adj2 100000;xPos +- hc dxPos 0;yPos +- vc dyPos 0;dq */ dxPos h "
"w;ady abs dyPos;adq abs dq;dz +- ady 0 adq;xg1 ?: dxPos 7 2;xg2 ?: dxPos 10 5;x1 */ w xg1 12;x2 */ w"
" xg2 12;yg1 ?: dyPos 7 2;yg2 ?: dyPos 10 5;y1 */ h yg1 12;y2 */ h yg2 12;t1 ?: dxPos l xPos;xl ?: dz"
" l t1;t2 ?: dyPos x1 xPos;xt ?: dz t2 x1;t3 ?: dxPos xPos r;xr ?: dz r t3;t4 ?: dyPos xPos x1;xb ?: "
"dz t4 x1;t5 ?: dxPos y1 yPos;yl ?: dz y1 t5;t6 ?: dyPos t yPos;yt ?: dz t6 t;t7 ?: dxPos yPos y1;yr "
"?: dz y1 t7;t8 ?: dyPos yPos b;yb ?: dz t8 b",
"l t r b",
"M l t L x1 t L xt yt L x2 t L r t L r y1 L xr yr L r y2 L r b L x2 b L xb yb L x1 b L l b L l y2 L "
"xl yl L l y1 Z"},
{"wedgeRoundRectCallout",
"adj1 -20833;adj2 62500;adj3 16667",
"dxPos */ w adj1 100000;dyPos */ h adj2 100000;xPos +- hc dxPos 0;yPos +- vc dyPos 0;dq */ dxPos h "
"w;ady abs dyPos;adq abs dq;dz +- ady 0 adq;xg1 ?: dxPos 7 2;xg2 ?: dxPos 10 5;x1 */ w xg1 12;x2 */ w"
" xg2 12;yg1 ?: dyPos 7 2;yg2 ?: dyPos 10 5;y1 */ h yg1 12;y2 */ h yg2 12;t1 ?: dxPos l xPos;xl ?: dz"
" l t1;t2 ?: dyPos x1 xPos;xt ?: dz t2 x1;t3 ?: dxPos xPos r;xr ?: dz r t3;t4 ?: dyPos xPos x1;xb ?: "
"dz t4 x1;t5 ?: dxPos y1 yPos;yl ?: dz y1 t5;t6 ?: dyPos t yPos;yt ?: dz t6 t;t7 ?: dxPos yPos y1;yr "
"?: dz y1 t7;t8 ?: dyPos yPos b;yb ?: dz t8 b;u1 */ ss adj3 100000;u2 +- r 0 u1;v2 +- b 0 u1;il */ u1"
" 29289 100000;ir +- r 0 il;ib +- b 0 il",
"il il ir ib",
"M l u1 A u1 u1 cd2 cd4 L x1 t L xt yt L x2 t L u2 t A u1 u1 3cd4 cd4 L r y1 L xr yr L r y2 L r v2 A "
"u1 u1 0 cd4 L x2 b L xb yb L x1 b L u1 b A u1 u1 cd4 cd4 L l y2 L xl yl L l y1 Z"},
};

const std::size_t PresetTableSize = std::size(PresetTable);

}  // namespace render
