// OpenCV's core, which chooses at run time, up to registers of 512 bits where its build has them. Arrays are
// wrapped as matrices of one row for each call.
#include <opencv2/core.hpp>

#include "bench/peers/peers.h"

namespace bench {
namespace {

template <class T>
cv::Mat matrix(const T* array, int32_t len) {
  return {1, len, cv::DataType<T>::type, const_cast<T*>(array)};
}

struct CvAdd {
  template <class T>
  void operator()(const T* src1, const T* src2, T* dst, int32_t len) const {
    cv::add(matrix(src1, len), matrix(src2, len), matrix(dst, len));
  }
  template <class T>
  void operator()(const T* src, T val, T* dst, int32_t len) const {
    cv::add(matrix(src, len), cv::Scalar(static_cast<double>(val)), matrix(dst, len));
  }
};

struct CvSubtract {
  template <class T>
  void operator()(const T* src1, const T* src2, T* dst, int32_t len) const {
    cv::subtract(matrix(src2, len), matrix(src1, len), matrix(dst, len));
  }
};

// (a + b) / 2, rounded once.
struct CvAddWeighted {
  template <class T>
  void operator()(const T* src1, const T* src2, T* dst, int32_t len, double scale) const {
    cv::addWeighted(matrix(src1, len), 1 / scale, matrix(src2, len), 1 / scale, 0, matrix(dst, len));
  }
};

struct CvAnd {
  void operator()(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, int32_t len) const {
    cv::bitwise_and(matrix(src1, len), matrix(src2, len), matrix(dst, len));
  }
};

struct CvAbsolute {
  template <class T>
  void operator()(const T* src, T* dst, int32_t len) const {
    cv::absdiff(matrix(src, len), cv::Scalar(0), matrix(dst, len));
  }
};

struct CvMaximum {
  template <class T>
  void operator()(const T* src1, const T* src2, T* dst, int32_t len) const {
    cv::Mat result = matrix(dst, len);
    cv::max(matrix(src1, len), matrix(src2, len), result);
  }
};

struct CvConvert {
  template <class A, class T>
  void operator()(const A* src, T* dst, int32_t len) const {
    matrix(src, len).convertTo(matrix(dst, len), cv::DataType<T>::type);
  }
  template <class A, class T>
  void operator()(const A* src, T* dst, int32_t len, double scale) const {
    matrix(src, len).convertTo(matrix(dst, len), cv::DataType<T>::type, 1 / scale);
  }
  template <class A, class T>
  void operator()(const A* src, T* dst, int32_t len, ZIVKRoundMode, double scale) const {
    operator()(src, dst, len, scale);
  }
};

struct CvSplit {
  void operator()(const ZIVK32fc* src, float* dstRe, float* dstIm, int32_t len) const {
    const cv::Mat parts[] = {matrix(dstRe, len), matrix(dstIm, len)};
    const int pairs[] = {0, 0, 1, 1};
    const cv::Mat both(1, len, CV_32FC2, const_cast<ZIVK32fc*>(src));
    cv::mixChannels(&both, 1, const_cast<cv::Mat*>(parts), 2, pairs, 2);
  }
};

struct CvFlip {
  template <class T>
  void operator()(const T* src, T* dst, int32_t len) const {
    cv::flip(matrix(src, len), matrix(dst, len), 1);
  }
};

struct CvMinMax {
  template <class T>
  void operator()(const T* src, int32_t len, T* minimum, T* maximum) const {
    double low = 0, high = 0;
    cv::minMaxLoc(matrix(src, len), &low, &high);
    *minimum = static_cast<T>(low);
    *maximum = static_cast<T>(high);
  }
};

constexpr char kOtherSteps[] = "rounds in other steps";
constexpr char kNanDropped[] = "drops NaN, confuses zeros";
constexpr char kProcessorRounding[] = "rounds as the processor is set; no rule for NaN";
constexpr char kNoNan[] = "no rule for NaN; finds the positions as well";

}  // namespace

std::vector<Row> opencv_rows() {
  cv::setNumThreads(1);
  return {
      ROW(ZIVKS_Add_32f, kPeer, CvAdd, kSrc1, kSrc2, kDst, kLen).with("cv::add"),
      ROW(ZIVKS_Add_16s, kPeer, CvAdd, kSrc1, kSrc2, kDst, kLen).with("cv::add"),
      ROW(ZIVKS_Add_16u, kPeer, CvAdd, kSrc1, kSrc2, kDst, kLen).with("cv::add"),
      ROW(ZIVKS_AddC_32f, kPeer, CvAdd, kSrc, kVal, kDst, kLen).with("cv::add"),
      ROW(ZIVKS_Sub_16s, kPeer, CvSubtract, kSrc1, kSrc2, kDst, kLen).with("cv::subtract"),
      ROW(ZIVKS_Add_8u_S, kPeer, CvAddWeighted, kSrc1, kSrc2, kDst, kLen, kNumber<2>)
          .with("cv::addWeighted")
          .but(kOtherSteps),
      ROW(ZIVKS_Add_16s_S, kPeer, CvAddWeighted, kSrc1, kSrc2, kDst, kLen, kNumber<2>)
          .with("cv::addWeighted")
          .but(kOtherSteps),
      ROW(ZIVKS_And_8u, kPeer, CvAnd, kSrc1, kSrc2, kDst, kLen).with("cv::bitwise_and"),
      ROW(ZIVKS_Abs_32f, kPeer, CvAbsolute, kSrc, kDst, kLen).with("cv::absdiff"),
      ROW(ZIVKS_MaxEvery_32f, kPeer, CvMaximum, kSrc1, kSrc2, kDst, kLen).with("cv::max").but(kNanDropped),
      ROW(ZIVKS_Convert_8u32f, kPeer, CvConvert, kSrc, kDst, kLen).with("cv::Mat::convertTo"),
      ROW(ZIVKS_Convert_16s32f, kPeer, CvConvert, kSrc, kDst, kLen).with("cv::Mat::convertTo"),
      ROW(ZIVKS_Convert_32s16s, kPeer, CvConvert, kSrc, kDst, kLen).with("cv::Mat::convertTo"),
      ROW(ZIVKS_Convert_32f64f, kPeer, CvConvert, kSrc, kDst, kLen).with("cv::Mat::convertTo"),
      ROW(ZIVKS_Convert_64f32f, kPeer, CvConvert, kSrc, kDst, kLen).with("cv::Mat::convertTo"),
      ROW(ZIVKS_Convert_32f16s_S, kPeer, CvConvert, kSrc, kDst, kLen, kNumber<ZIVK_RND_NEAR>, kNumber<4>)
          .with("cv::Mat::convertTo")
          .but(kProcessorRounding),
      ROW(ZIVKS_CplxToReal_32fc, kPeer, CvSplit, kSrc, kDstRe, kDstIm, kLen).with("cv::mixChannels"),
      ROW(ZIVKS_Flip_8u, kPeer, CvFlip, kSrc, kDst, kLen).with("cv::flip"),
      ROW(ZIVKS_Flip_32f, kPeer, CvFlip, kSrc, kDst, kLen).with("cv::flip"),
      ROW(ZIVKS_MinMax_16s, kPeer, CvMinMax, kSrc, kLen, kMin, kMax)
          .with("cv::minMaxLoc")
          .but("finds the positions as well"),
      ROW(ZIVKS_MinMax_32f, kPeer, CvMinMax, kSrc, kLen, kMin, kMax).with("cv::minMaxLoc").but(kNoNan),
  };
}

}  // namespace bench
