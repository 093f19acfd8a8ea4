// Eigen, compiled for the same processor as the library.
#include <Eigen/Core>

#include "bench/peers/peers.h"

namespace bench {
namespace {

template <class T>
auto in(const T* array, int32_t len) {
  return Eigen::Map<const Eigen::Array<T, Eigen::Dynamic, 1>>(array, len);
}
template <class T>
auto out(T* array, int32_t len) {
  return Eigen::Map<Eigen::Array<T, Eigen::Dynamic, 1>>(array, len);
}
const std::complex<float>* complex(const ZIVK32fc* array) {
  return reinterpret_cast<const std::complex<float>*>(array);
}
std::complex<float>* complex(ZIVK32fc* array) { return reinterpret_cast<std::complex<float>*>(array); }

struct EigenAdd {
  template <class T>
  void operator()(const T* src1, const T* src2, T* dst, int32_t len) const {
    out(dst, len) = in(src1, len) + in(src2, len);
  }
  template <class T>
  void operator()(const T* src, T val, T* dst, int32_t len) const {
    out(dst, len) = in(src, len) + val;
  }
};

struct EigenAddProduct {
  template <class T>
  void operator()(const T* src1, const T* src2, T* srcDst, int32_t len) const {
    out(srcDst, len) += in(src1, len) * in(src2, len);
  }
  void operator()(const ZIVK32fc* src1, const ZIVK32fc* src2, ZIVK32fc* srcDst, int32_t len) const {
    operator()(complex(src1), complex(src2), complex(srcDst), len);
  }
};

struct EigenAbs {
  template <class T>
  void operator()(const T* src, T* dst, int32_t len) const {
    out(dst, len) = in(src, len).abs();
  }
};

struct EigenConjugate {
  void operator()(const ZIVK32fc* src, ZIVK32fc* dst, int32_t len) const {
    out(complex(dst), len) = in(complex(src), len).conjugate();
  }
};

struct EigenReal {
  void operator()(const ZIVK32fc* src, float* dst, int32_t len) const {
    out(dst, len) = in(complex(src), len).real();
  }
};

struct EigenReverse {
  template <class T>
  void operator()(const T* src, T* dst, int32_t len) const {
    out(dst, len) = in(src, len).reverse();
  }
};

struct EigenCast {
  template <class A, class T>
  void operator()(const A* src, T* dst, int32_t len) const {
    out(dst, len) = in(src, len).template cast<T>();
  }
};

struct EigenMaximumOfEach {
  template <class T>
  void operator()(const T* src1, const T* src2, T* dst, int32_t len) const {
    out(dst, len) = in(src1, len).max(in(src2, len));
  }
};

struct EigenMaximum {
  template <class T>
  void operator()(const T* src, int32_t len, T* maximum) const {
    *maximum = in(src, len).maxCoeff();
  }
  template <class T>
  void operator()(const T* src, int32_t len, T* maximum, int32_t* index) const {
    *maximum = in(src, len).maxCoeff(index);
  }
};

constexpr char kNoNan[] = "no rule for NaN and zeros";

}  // namespace

std::vector<Row> eigen_rows() {
  return {
      ROW(ZIVKS_Add_32f, kPeer, EigenAdd, kSrc1, kSrc2, kDst, kLen).with("Eigen +"),
      ROW(ZIVKS_Add_64f, kPeer, EigenAdd, kSrc1, kSrc2, kDst, kLen).with("Eigen +"),
      ROW(ZIVKS_AddC_32f, kPeer, EigenAdd, kSrc, kVal, kDst, kLen).with("Eigen +"),
      ROW(ZIVKS_AddProduct_32f, kPeer, EigenAddProduct, kSrc1, kSrc2, kSrcDst, kLen)
          .with("Eigen += *")
          .but("may round twice"),
      ROW(ZIVKS_AddProduct_32fc, kPeer, EigenAddProduct, kSrc1, kSrc2, kSrcDst, kLen)
          .with("Eigen += *")
          .but("rounds in other steps"),
      ROW(ZIVKS_Abs_32f, kPeer, EigenAbs, kSrc, kDst, kLen).with("Eigen abs"),
      ROW(ZIVKS_Conj_32fc, kPeer, EigenConjugate, kSrc, kDst, kLen).with("Eigen conjugate"),
      ROW(ZIVKS_Real_32fc, kPeer, EigenReal, kSrc, kDst, kLen).with("Eigen real"),
      ROW(ZIVKS_Flip_32f, kPeer, EigenReverse, kSrc, kDst, kLen).with("Eigen reverse"),
      ROW(ZIVKS_Flip_64f, kPeer, EigenReverse, kSrc, kDst, kLen).with("Eigen reverse"),
      ROW(ZIVKS_Convert_16s32f, kPeer, EigenCast, kSrc, kDst, kLen).with("Eigen cast"),
      ROW(ZIVKS_Convert_32f64f, kPeer, EigenCast, kSrc, kDst, kLen).with("Eigen cast"),
      ROW(ZIVKS_MaxEvery_32f, kPeer, EigenMaximumOfEach, kSrc1, kSrc2, kDst, kLen)
          .with("Eigen max")
          .but(kNoNan),
      ROW(ZIVKS_Max_32f, kPeer, EigenMaximum, kSrc, kLen, kResult).with("Eigen maxCoeff").but(kNoNan),
      ROW(ZIVKS_Max_32s, kPeer, EigenMaximum, kSrc, kLen, kResult).with("Eigen maxCoeff"),
      ROW(ZIVKS_MaxIndx_32f, kPeer, EigenMaximum, kSrc, kLen, kResult, kIndx)
          .with("Eigen maxCoeff")
          .but(kNoNan),
  };
}

}  // namespace bench
