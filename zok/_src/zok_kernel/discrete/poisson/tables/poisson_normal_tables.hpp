// Made by: tools/make_tables.py poisson_normal_tables.hpp
// clang-format off
#pragma once

namespace orv {
inline namespace ORV_TAG {

// Cubic polynomials in f of a0 - 1, a1 to a5 for means (1 + f) 2^row: the floor of
// a0 + a5 g (a1 + a2 g + a3 g^2 + a4 g^3) follows the law for a Gaussian g.
inline constexpr double iPoissC[7][6][4] = {
    {{0x1.42237905b5a57p-2, 0x1.043c74d50d447p+0, -0x1.7ca66c8eec093p-7, 0x1.f81c02cc3a364p-9},
     {0x1.f9db54e43911cp-1, -0x1.643cb5025b079p-9, 0x1.1308124d5e35fp-7, -0x1.da72df072978bp-9},
     {0x1.4d6c3fbd285edp-3, -0x1.08c1f82b85b2dp-4, 0x1.d37995ecb6c09p-6, -0x1.d808c24dc0c5cp-8},
     {-0x1.18ac16d4f3993p-7, 0x1.2cc29eeb9e6dep-10, 0x1.0e67427478f08p-9, -0x1.623055aa0511ap-10},
     {0x1.29336ac04e58bp-11, 0x1.3f235a785e057p-12, -0x1.3014e878e198dp-11, 0x1.47075f8ba48c1p-12},
     {0x1.0006c2f3a8be1p+0, 0x1.fc8d051038c7bp-2, -0x1.b37032c9e5fd1p-4, 0x1.86c45d3d7fa9cp-6}},
    {{0x1.52c90e962527cp+0, 0x1.010ab126ca257p+1, -0x1.2d1146fe411abp-8, 0x1.65c98553a20e6p-10},
     {0x1.faddee437ed45p-1, 0x1.1535060f531a6p-7, -0x1.62e60b29d26acp-8, 0x1.dd9c295c1b3e6p-10},
     {0x1.e960f3c5dd4f2p-4, -0x1.cd61eda2a026fp-5, 0x1.e180b976c5958p-6, -0x1.15050fc7a31e5p-7},
     {-0x1.b2b795680a422p-8, 0x1.764499231c242p-9, 0x1.d6964df36f5e7p-14, -0x1.04c24a8c74116p-11},
     {0x1.306f46ab6d620p-11, 0x1.21e4c46a93268p-13, -0x1.ffec6321034bep-12, 0x1.17bd27563ce49p-12},
     {0x1.6a13765770d04p+0, 0x1.679989e9a8ab7p-1, -0x1.33e6bf557355bp-3, 0x1.14506439ab417p-5}},
    {{0x1.aa05d1593442dp+1, 0x1.005b3dbece26bp+2, -0x1.add7e7031705bp-9, 0x1.5d91d3b11640cp-11},
     {0x1.fd56ceda235afp-1, 0x1.59fa6156b0d7ep-8, -0x1.435d9aa78e81cp-8, 0x1.0f31e316b0a50p-9},
     {0x1.5877de8b3b916p-4, -0x1.5d9bd352b790ap-5, 0x1.9fa2f15bf95d0p-6, -0x1.04430cc1c44d1p-7},
     {-0x1.0fdcd863636c4p-8, 0x1.d2b407bb696e0p-9, -0x1.fb38a86f45002p-10, 0x1.01376fbd31963p-11},
     {0x1.00fa31dc4fe01p-11, -0x1.df1e41be9569dp-13, -0x1.7504523faff57p-14, 0x1.643edd7a7eb30p-14},
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
