// VOLK, which chooses at run time, up to registers of 512 bits.
#include <volk/volk.h>

#include "bench/peers/peers.h"

namespace bench {
namespace {

template <auto& routine>
struct Unary {
  template <class A, class T>
  void operator()(const A* src, T* dst, int32_t len) const {
    routine(dst, src, static_cast<unsigned>(len));
  }
};

template <auto& routine>
struct Binary {
  template <class T>
  void operator()(const T* src1, const T* src2, T* dst, int32_t len) const {
    routine(dst, src1, src2, static_cast<unsigned>(len));
  }
};

template <auto& routine>
struct WithConstant {
  template <class T>
  void operator()(const T* src, T val, T* dst, int32_t len) const {
    routine(dst, src, val, static_cast<unsigned>(len));
  }
};

// Divides integers by the scale ...
template <auto& routine>
struct FromInteger {
  template <class A>
  void operator()(const A* src, float* dst, int32_t len, double scale = 1) const {
    routine(dst, src, static_cast<float>(scale), static_cast<unsigned>(len));
  }
};

// ... and multiplies floats by it.
template <auto& routine>
struct ToInteger {
  template <class T>
  void operator()(const float* src, T* dst, int32_t len, ZIVKRoundMode, double scale) const {
    routine(dst, src, static_cast<float>(1 / scale), static_cast<unsigned>(len));
  }
};

const lv_32fc_t* complex(const ZIVK32fc* array) { return reinterpret_cast<const lv_32fc_t*>(array); }
lv_32fc_t* complex(ZIVK32fc* array) { return reinterpret_cast<lv_32fc_t*>(array); }

struct Deinterleave {
  void operator()(const ZIVK32fc* src, float* dstRe, float* dstIm, int32_t len) const {
    volk_32fc_deinterleave_32f_x2(dstRe, dstIm, complex(src), static_cast<unsigned>(len));
  }
  void operator()(const ZIVK16sc* src, int16_t* dstRe, int16_t* dstIm, int32_t len) const {
    volk_16ic_deinterleave_16i_x2(dstRe, dstIm, reinterpret_cast<const lv_16sc_t*>(src),
                                  static_cast<unsigned>(len));
  }
};

struct DeinterleaveReal {
  void operator()(const ZIVK32fc* src, float* dst, int32_t len) const {
    volk_32fc_deinterleave_real_32f(dst, complex(src), static_cast<unsigned>(len));
  }
};

struct Interleave {
  void operator()(const float* srcRe, const float* srcIm, ZIVK32fc* dst, int32_t len) const {
    volk_32f_x2_interleave_32fc(complex(dst), srcRe, srcIm, static_cast<unsigned>(len));
  }
};

struct Conjugated {
  void operator()(const ZIVK32fc* src, ZIVK32fc* dst, int32_t len) const {
    volk_32fc_conjugate_32fc(complex(dst), complex(src), static_cast<unsigned>(len));
  }
};

struct AddComplex {
  void operator()(const ZIVK32fc* src1, const ZIVK32fc* src2, ZIVK32fc* dst, int32_t len) const {
    volk_32fc_x2_add_32fc(complex(dst), complex(src1), complex(src2), static_cast<unsigned>(len));
  }
};

struct And {
  void operator()(const uint32_t* src1, const uint32_t* src2, uint32_t* dst, int32_t len) const {
    volk_32i_x2_and_32i(reinterpret_cast<int32_t*>(dst), reinterpret_cast<const int32_t*>(src1),
                        reinterpret_cast<const int32_t*>(src2), static_cast<unsigned>(len));
  }
};

struct IndexOfMaximum {
  void operator()(const float* src, int32_t len, float* maximum, int32_t* index) const {
    uint32_t found = 0;
    volk_32f_index_max_32u(&found, src, static_cast<unsigned>(len));
    *maximum = src[found];
    *index = static_cast<int32_t>(found);
  }
};

constexpr char kNanDropped[] = "drops NaN, confuses zeros";
constexpr char kNanPosition[] = "no rule for NaN";
constexpr char kProcessorRounding[] = "rounds as the processor is set; no rule for NaN";

}  // namespace

#define VOLK_ROW(routine, function, form, ...) ROW(function, kPeer, form<routine>, __VA_ARGS__).with(#routine)

std::vector<Row> volk_rows() {
  return {
      VOLK_ROW(volk_32f_x2_add_32f, ZIVKS_Add_32f, Binary, kSrc1, kSrc2, kDst, kLen),
      VOLK_ROW(volk_64f_x2_add_64f, ZIVKS_Add_64f, Binary, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_Add_32fc, kPeer, AddComplex, kSrc1, kSrc2, kDst, kLen).with("volk_32fc_x2_add_32fc"),
      VOLK_ROW(volk_32f_s32f_add_32f, ZIVKS_AddC_32f, WithConstant, kSrc, kVal, kDst, kLen),
      VOLK_ROW(volk_32f_x2_max_32f, ZIVKS_MaxEvery_32f, Binary, kSrc1, kSrc2, kDst, kLen).but(kNanDropped),
      VOLK_ROW(volk_64f_x2_max_64f, ZIVKS_MaxEvery_64f, Binary, kSrc1, kSrc2, kDst, kLen).but(kNanDropped),
      ROW(ZIVKS_MaxIndx_32f, kPeer, IndexOfMaximum, kSrc, kLen, kResult, kIndx)
          .with("volk_32f_index_max_32u")
          .but(kNanPosition),
      ROW(ZIVKS_And_32u, kPeer, And, kSrc1, kSrc2, kDst, kLen).with("volk_32i_x2_and_32i"),
      VOLK_ROW(volk_16i_s32f_convert_32f, ZIVKS_Convert_16s32f, FromInteger, kSrc, kDst, kLen),
      VOLK_ROW(volk_16i_s32f_convert_32f, ZIVKS_Convert_16s32f_S, FromInteger, kSrc, kDst, kLen, kNumber<4>),
      VOLK_ROW(volk_32i_s32f_convert_32f, ZIVKS_Convert_32s32f_S, FromInteger, kSrc, kDst, kLen, kNumber<4>),
      VOLK_ROW(volk_8i_convert_16i, ZIVKS_Convert_8s16s, Unary, kSrc, kDst, kLen).but("multiplies by 256"),
      VOLK_ROW(volk_32f_convert_64f, ZIVKS_Convert_32f64f, Unary, kSrc, kDst, kLen),
      VOLK_ROW(volk_64f_convert_32f, ZIVKS_Convert_64f32f, Unary, kSrc, kDst, kLen),
      VOLK_ROW(volk_32f_s32f_convert_8i, ZIVKS_Convert_32f8s_S, ToInteger, kSrc, kDst, kLen,
               kNumber<ZIVK_RND_NEAR>, kNumber<4>)
          .but(kProcessorRounding),
      VOLK_ROW(volk_32f_s32f_convert_16i, ZIVKS_Convert_32f16s_S, ToInteger, kSrc, kDst, kLen,
               kNumber<ZIVK_RND_NEAR>, kNumber<4>)
          .but(kProcessorRounding),
      VOLK_ROW(volk_32f_s32f_convert_32i, ZIVKS_Convert_32f32s_S, ToInteger, kSrc, kDst, kLen,
               kNumber<ZIVK_RND_NEAR>, kNumber<4>)
          .but(kProcessorRounding),
      ROW(ZIVKS_CplxToReal_32fc, kPeer, Deinterleave, kSrc, kDstRe, kDstIm, kLen)
          .with("volk_32fc_deinterleave_32f_x2"),
      ROW(ZIVKS_CplxToReal_16sc, kPeer, Deinterleave, kSrc, kDstRe, kDstIm, kLen)
          .with("volk_16ic_deinterleave_16i_x2"),
      ROW(ZIVKS_Real_32fc, kPeer, DeinterleaveReal, kSrc, kDst, kLen).with("volk_32fc_deinterleave_real_32f"),
      ROW(ZIVKS_RealToCplx_32f, kPeer, Interleave, kSrcRe, kSrcIm, kDst, kLen)
          .with("volk_32f_x2_interleave_32fc"),
      ROW(ZIVKS_Conj_32fc, kPeer, Conjugated, kSrc, kDst, kLen).with("volk_32fc_conjugate_32fc"),
  };
}

}  // namespace bench
