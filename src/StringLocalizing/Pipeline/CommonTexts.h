#pragma once

#include "StringLocalizing/Model/CompactTexts.h"

#include <boost/shared_ptr.hpp>

#include <utility>

namespace LocalizationManager::StringLocalizing::Pipeline {

// The compiled common texts of one culture, shared by the localizers of that culture: the
// first pipeline that finds none loads, compiles and publishes them, and later pipelines take
// the published ones. Published texts are complete and never change again, so the pipelines
// that hold them read them without a lock; a pipeline that finds the common texts empty
// publishes texts of its own, which pipelines built earlier never see.
//
// Not thread-safe: Published and Publish are called under the lock that the localizers of the
// culture share around building a pipeline.
class CommonTexts {
  public:
    CommonTexts() = default;
    CommonTexts(const CommonTexts&) = delete;
    CommonTexts& operator=(const CommonTexts&) = delete;

    // The texts published last; null before the first Publish.
    const boost::shared_ptr<const Model::CompactTexts>& Published() const noexcept {
        return published_;
    }

    // Whether a pipeline must load the common texts: none were published, or only an empty
    // set (an empty common file is read again by the next pipeline).
    bool NeedsLoading() const noexcept { return !published_ || published_->Empty(); }

    // `compiled` must be compiled and is never changed afterwards.
    void Publish(boost::shared_ptr<const Model::CompactTexts> compiled) noexcept {
        published_ = std::move(compiled);
    }

  private:
    boost::shared_ptr<const Model::CompactTexts> published_;
};

}  // namespace LocalizationManager::StringLocalizing::Pipeline
