// Made by: tools/make_tables.py poisson_normal_tables.hpp
// clang-format off
#pragma once

namespace orv {
inline namespace ORV_TAG {

// Cubic polynomials in f of a0 - 1, a1 to a5 for means (1 + f) 2^row: the floor of
// a0 + a5 g (a1 + a2 g + a3 g^2 + a4 g^3) follows the law for a Gaussian g.
inline constexpr double iPoissC[7][6][4] = {
    {{0x1.436ddf469bc06p-2, 0x1.0430390118416p+0, -0x1.fb7f345b06da6p-7, 0x1.b49f1e4176d0ep-8},
     {0x1.fa2ebccd861b5p-1, -0x1.ecdcf2a95b295p-7, 0x1.e0b54a0b9e747p-6, -0x1.c09e659333982p-7},
     {0x1.3f38304a7bee2p-3, -0x1.6ce7296c5b597p-5, 0x1.331a2825ba66dp-7, -0x1.fc772e3b1bdb0p-11},
     {-0x1.99121e3d842d8p-9, -0x1.dae7d1e7b9dbap-8, 0x1.404062bd16473p-8, -0x1.3493fde97b6b3p-11},
     {-0x1.0f5873f09e17fp-11, 0x1.466e3598aaa5ap-10, -0x1.4704ed6b98c91p-15, -0x1.4c0e843c7b7b0p-12},
     {0x1.0006c2f3a8be1p+0, 0x1.fc8d051038c7bp-2, -0x1.b37032c9e5fd1p-4, 0x1.86c45d3d7fa9cp-6}},
    {{0x1.52c6e2234c99fp+0, 0x1.00f828c25c22fp+1, -0x1.ca347ca43b9bdp-9, 0x1.ac244994ff9cfp-11},
     {0x1.fa838dd0284f2p-1, 0x1.508081484d985p-7, -0x1.c9e4f91d21723p-8, 0x1.26dca247e946ap-9},
     {0x1.ea618eec2c480p-4, -0x1.ca365559b34d3p-5, 0x1.c8cd71782a2bep-6, -0x1.ec496fac69b47p-8},
     {-0x1.8ee69251afa7fp-8, 0x1.16abaf4bc36c4p-10, 0x1.1df3a0bbbba73p-9, -0x1.582d8a7c73431p-10},
     {0x1.892c2c4395147p-12, 0x1.571ade5efa868p-11, -0x1.f3d7f3b5a255ep-11, 0x1.acf3f90c978d8p-12},
     {0x1.6a13765770d04p+0, 0x1.679989e9a8ab7p-1, -0x1.33e6bf557355bp-3, 0x1.14506439ab417p-5}},
    {{0x1.aa045e51bdbcdp+1, 0x1.005df3f5ef79ap+2, -0x1.bef824e7b24b4p-9, 0x1.71fc38d6bd992p-11},
     {0x1.fd54cd6a230c3p-1, 0x1.5f5c39936561cp-8, -0x1.4bd0350b50d22p-8, 0x1.17805003bdec6p-9},
     {0x1.58ad05e321351p-4, -0x1.5f585ef7d9dcap-5, 0x1.a354268ea053cp-6, -0x1.0713d382f4871p-7},
     {-0x1.0f58f1809de0bp-8, 0x1.cd28463be8ec3p-9, -0x1.e9c965d3225e4p-10, 0x1.e003b047d0596p-12},
     {0x1.f6feaf0866cb9p-12, -0x1.7ee4716019219p-13, -0x1.2b3537ffb3540p-13, 0x1.c16aa43da01bbp-14},
     {0x1.0006c2f3a8be1p+1, 0x1.fc8d051038c7bp-1, -0x1.b37032c9e5fd1p-3, 0x1.86c45d3d7fa9cp-5}},
    {{0x1.d534091ac99aep+2, 0x1.000e984422dc7p+3, -0x1.1330690c71878p-10, 0x1.8371006fec1c4p-13},
     {0x1.fe8e9acc2a9fbp-1, 0x1.38005f0fab65dp-9, -0x1.032a75a1bc4b7p-9, 0x1.bf7315e466f21p-11},
     {0x1.e218b8d0b758dp-5, -0x1.d1e0331b6c5e4p-6, 0x1.0d1df1e02827cp-6, -0x1.51a74a4b14d13p-8},
     {-0x1.0a01972bead99p-9, 0x1.1cb3ccef6fb7bp-9, -0x1.b2d0093788ac8p-10, 0x1.2f9c27a96dbacp-11},
     {0x1.0caec86b4b046p-12, -0x1.7bcc978a5e2efp-12, 0x1.13ab65e4d48d8p-12, -0x1.4f6e381f5f5adp-14},
     {0x1.6a13765770d04p+1, 0x1.679989e9a8ab7p+0, -0x1.33e6bf557355bp-2, 0x1.14506439ab417p-4}},
    {{0x1.eaa1d29d21269p+3, 0x1.00022d2a05f76p+4, 0x1.b020fb45ad8bep-12, -0x1.f0cb0fc7d1d7cp-12},
     {0x1.ff2f7cfe5b993p-1, 0x1.a74ed8f779e40p-10, -0x1.9b43cf104ee8ep-10, 0x1.7daa119b63807p-11},
     {0x1.55861323f690ap-5, -0x1.491a4c9ac4b68p-6, 0x1.738e179b849b7p-7, -0x1.c54bb926b21f1p-9},
     {-0x1.ebfc50f73fa97p-11, 0x1.f74499d8dfddap-11, -0x1.7d73a49420fe1p-11, 0x1.0cb272dd17800p-12},
     {0x1.42974fcff1e16p-14, -0x1.0c42be1666e50p-13, 0x1.01437f343fdc0p-13, -0x1.97af251f8a13dp-15},
     {0x1.0006c2f3a8be1p+2, 0x1.fc8d051038c7bp+0, -0x1.b37032c9e5fd1p-2, 0x1.86c45d3d7fa9cp-4}},
    {{0x1.f552fe40c5cd2p+4, 0x1.000068e2e79c7p+5, 0x1.14b9c225ef49dp-11, -0x1.f4e688e5b759ap-12},
     {0x1.ff91220a53a72p-1, 0x1.0cc4ab3473293p-10, -0x1.3ddba9a2a945fp-10, 0x1.459ae220a3f12p-11},
     {0x1.e309b3b004df5p-6, -0x1.d361e8256fca9p-7, 0x1.09941e3e726f3p-7, -0x1.45c42055b9576p-9},
     {-0x1.d874837c75664p-12, 0x1.d1e74166aa85bp-12, -0x1.587fde3af0851p-12, 0x1.def2d6b493938p-14},
     {0x1.883ad315de032p-16, -0x1.2e48e21aa68d6p-15, 0x1.19be140446560p-15, -0x1.beefd357995fep-17},
     {0x1.6a13765770d04p+2, 0x1.679989e9a8ab7p+1, -0x1.33e6bf557355bp-1, 0x1.14506439ab417p-3}},
    {{0x1.faaa158349156p+5, 0x1.ffffea2d5d95fp+5, 0x1.5f1589c680b0cp-11, -0x1.0ddb4a8f5b207p-11},
     {0x1.ffc62b5c9add7p-1, 0x1.5e4c8591c97a2p-11, -0x1.fdbd315f64ee3p-11, 0x1.1ca91af5fbe0fp-11},
     {0x1.5567772d91696p-6, -0x1.4a49b374023abp-7, 0x1.778b6c09f0648p-8, -0x1.cced2ee341011p-10},
     {-0x1.cf4ff638cb6b4p-13, 0x1.c0e2b36aff808p-13, -0x1.47f6be9d68d00p-13, 0x1.c50abc1a5376ep-15},
     {0x1.038109be260c5p-17, -0x1.89ff02237fb49p-17, 0x1.7877365c3abf2p-17, -0x1.360cdbe9efae5p-18},
     {0x1.0006c2f3a8be1p+3, 0x1.fc8d051038c7bp+1, -0x1.b37032c9e5fd1p-1, 0x1.86c45d3d7fa9cp-3}},
};

}  // namespace ORV_TAG
}  // namespace orv
