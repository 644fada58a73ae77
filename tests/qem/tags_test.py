#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks that no unit has an instruction beyond the instruction set that its name promises, and none
whose result differs between makers of processors.

usage: tags_test.py OBJECT...    all objects of the library"""
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
import function_list  # noqa: E402

SSE2, SSE3, SSSE3, SSE41, SSE42, AVX, BEYOND = range(7)
LIMIT = {"px": SSE2, "w7": SSE2, "t7": SSE3, "v8": SSE3, "n8": SSE41, "p8": SSE41, "g9": AVX}

NEWER = [  # the first pattern that matches the whole mnemonic tells its instruction set
    (BEYOND, r"v?r(cp|sqrt)[ps]s|f(sin|cos|sincos|ptan|patan|2xm1|yl2x|yl2xp1)"),  # makers differ
    (SSE3, r"addsubp[sd]|haddp[sd]|hsubp[sd]|lddqu|movddup|movs[hl]dup|fisttp.*|monitor|mwait"),
    (SSSE3, r"pabs[bwd]|palignr|ph(add|sub)(w|d|sw)|pmaddubsw|pmulhrsw|pshufb|psign[bwd]"),
    (SSE41, r"blendv?p[sd]|dpp[sd]|extractps|insertps|movntdqa|mpsadbw|packusdw|pblend(vb|w)|"
            r"pcmpeqq|pextr[bdq]|pinsr[bdq]|pm(ax|in)(sb|sd|uw|ud)|pmov[sz]x..|pmuldq|pmulld|ptest|"
            r"round[ps][sd]|phminposuw"),
    (SSE42, r"crc32.?|pcmp[ei]str[im]|pcmpgtq|popcnt.?"),
    (BEYOND, r"(andn|bextr|bls(i|r|msk)|bzhi|mulx|pdep|pext|rorx|sarx|shlx|shrx|adcx|adox|movbe|"
             r"lzcnt|aes.*|pclmul.*|sha\d.*|gf2p8.*|rd(rand|seed).?|xabort|xbegin)[lqw]?"),
    (BEYOND, r"vf(n?m(add|sub).*)|vcvt(ph2ps|ps2ph).*|vaes.*|vpclmul.*|vgf2.*"),
    (BEYOND, r"vpbroadcast.*|vbroadcasti128|v(insert|extract)i128|vperm(2i128|d|q|ps|pd)|vpblendd|"
             r"vpmaskmov.|vps(ll|rl|ra)v.|vp?gather..?.?|vp?scatter.*"),
    (AVX, r"v(?!er[rw]$|m(call|launch|resume|ptr)).*"),
]
NEWER = [(level, re.compile(pattern)) for level, pattern in NEWER]
# 256-bit forms that AVX has under a name of the integer kind, all others came later.
AVX_256 = re.compile(r"vptest|vpermilp[sd]|vperm2f128")


def level_of(mnemonic, operands):
    """tzcnt is not listed: it is what the disassembler calls a bit scan with an idle prefix."""
    if re.search(r"%zmm|%k[0-7]|%[xy]mm(1[6-9]|2\d|3[01])|\{1to", operands):
        return BEYOND
    for level, pattern in NEWER:
        if pattern.fullmatch(mnemonic):
            break
    else:
        return SSE2
    later = (mnemonic.startswith("vp") and "%ymm" in operands and not AVX_256.fullmatch(mnemonic) or
             mnemonic.startswith("vbroadcasts") and "(" not in operands or  # out of a register
             mnemonic == "vmovntdqa" and "%ymm" in operands)
    if level == AVX and later:
        return BEYOND
    return level


def instructions(listing):
    for line in listing.splitlines():
        match = re.match(r"\s*[0-9a-f]+:\t(?:(?:rep\w*|lock|data16|bnd|notrack|[c-g]s)\s+)*(\S+)\s*(.*)", line)
        if match:
            yield match[1], match[2]


def violations(listing, limit):
    return [f"{m} {o}" for m, o in instructions(listing) if level_of(m, o) > limit]


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def test_itself():
    """The checker finds each kind of violation, and lets what is allowed pass."""
    kinds = [
        (SSE2, "addpd  %xmm0,%xmm1", "rep stos %eax,%es:(%edi)", "fldl   0x8(%esp)", "pause",
         "tzcnt  %eax,%eax", "verr   %ax", "cvttsd2si %xmm0,%eax", "punpckhqdq %xmm0,%xmm1"),
        (SSE3, "movddup %xmm0,%xmm1", "lddqu  (%eax),%xmm0", "haddpd %xmm0,%xmm0"),
        (SSSE3, "pshufb %xmm1,%xmm0", "pabsd  %xmm1,%xmm0"),
        (SSE41, "roundpd $0x1,%xmm0,%xmm1", "blendvpd %xmm0,%xmm1,%xmm2", "pextrd $0x1,%xmm0,%eax",
         "ptest  %xmm0,%xmm0", "pmovsxdq %xmm0,%xmm0"),
        (SSE42, "pcmpgtq %xmm0,%xmm1", "popcnt %eax,%eax", "crc32b (%eax),%ecx"),
        (AVX, "vaddpd %ymm0,%ymm1,%ymm2", "vzeroupper", "vpaddq %xmm0,%xmm1,%xmm2",
         "vbroadcastsd (%eax),%ymm0", "vextractf128 $0x1,%ymm0,%xmm1", "vptest %ymm0,%ymm0",
         "vpermilpd $0x5,%ymm0,%ymm1"),
        (BEYOND, "vpaddq %ymm0,%ymm1,%ymm2", "vfmadd213sd %xmm0,%xmm1,%xmm2", "shlx   %eax,%ecx,%edx",
         "vbroadcastsd %xmm0,%ymm0", "vextracti128 $0x1,%ymm0,%xmm1", "vpermpd $0x1b,%ymm0,%ymm1",
         "vaddpd %zmm0,%zmm1,%zmm2", "vpmovsxdq %xmm0,%ymm0", "vpsllvq %xmm0,%xmm1,%xmm2",
         "rcpps  %xmm0,%xmm1", "vrsqrtss %xmm0,%xmm0,%xmm1", "fyl2xp1",
         "andn   %eax,%ecx,%edx", "vgatherdpd %ymm0,(%eax,%xmm1,8),%ymm2", "lzcnt  %eax,%eax"),
    ]
    for level, *lines in kinds:
        for line in lines:
            listing = f"   1c:\t{line}\n"
            for limit in range(BEYOND + 1):
                found = len(violations(listing, limit))
                if found != (level > limit):
                    sys.exit(f"the checker is wrong about '{line}' at limit {limit}")


def expected_units():
    """File name of each kernel's unit, without its ending -> tag."""
    units = {}
    for f in function_list.functions():
        by_level = dict(zip(("LA", "HA", "EP"), f.stub_suffixes), HA="_ha")
        for kernel in f.kernels:
            tag = kernel[:2].lower()
            units[f"qem_{tag}_{f.type}{f.name.lower()}{by_level[kernel[2:4]]}"] = tag
    return units


def main(objects):
    test_itself()
    missing = expected_units()
    faults, counts, weak = [], {}, {}
    for path in map(pathlib.Path, objects):
        random_side = "zok" in path.parts  # all of it is for AVX, whatever a unit is called
        shared = re.match(r"qem_(\w\w)_", path.name) if "_heap" in path.parts else None
        tag = shared[1] if shared else missing.pop(
            path.name.split(".")[0], "g9" if random_side else None)
        listing = output("objdump", "-d", "--no-show-raw-insn", "-M", "att", str(path))
        count = sum(1 for _ in instructions(listing))
        counts[tag] = counts.get(tag, 0) + count
        if tag and count == 0 and not random_side:  # a unit of tables has none
            faults.append(f"{path.name}: no instruction seen")
        faults += [f"{path.name}: {text}" for text in violations(listing, LIMIT[tag or "w7"])]
        # The linker keeps one of several weak symbols of a name, whatever unit it comes from.
        for line in output("nm", "--defined-only", str(path)).splitlines():
            _, kind, symbol = line.split(maxsplit=2)
            if kind in "Ww" and weak.setdefault(symbol, tag) != tag:
                faults.append(f"{path.name}: {symbol} is also in a unit of tag {weak[symbol]}")
    faults += [f"{unit}: no such unit" for unit in missing]
    for fault in faults[:40]:
        print(fault)
    print("instructions seen:", ", ".join(f"{tag or 'core'} {n}" for tag, n in sorted(
        counts.items(), key=lambda item: item[0] or "")))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
