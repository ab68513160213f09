#include "workbench/flow/chainblocks.h"

namespace qmrules::workbench::flow {

BlockBody::BlockBody(const RangeBody& body) {
  LayOut(body);
  Join(body);
}

void BlockBody::LayOut(const RangeBody& body) {
  const auto places = static_cast<std::uint32_t>(body.points.size());
  // Whether the place continues the block of the one before it.
  const auto continues = [&](std::uint32_t place) {
    if (place == 0 || body.Ins(place).size() != 1) return false;
    const std::uint32_t before = body.Ins(place)[0];
    return before != body.exit && body.Outs(before).size() == 1;
  };
  positions_.resize(places);
  order_.reserve(places);
  blocks_.reserve(places);
  for (std::uint32_t first = 0; first < places; ++first) {
    if (continues(first)) continue;
    starts_.push_back(static_cast<std::uint32_t>(order_.size()));
    for (std::uint32_t place = first;;) {
      positions_[place] = static_cast<std::uint32_t>(order_.size());
      order_.push_back(place);
      blocks_.push_back(static_cast<std::uint32_t>(starts_.size() - 1));
      if (body.Outs(place).size() != 1 || !continues(body.Outs(place)[0])) break;
      place = body.Outs(place)[0];
    }
  }
  starts_.push_back(static_cast<std::uint32_t>(order_.size()));
  if (body.exit != RangeBody::kNoPlace) exitBlock_ = blocks_[positions_[body.exit]];
}

void BlockBody::Join(const RangeBody& body) {
  beforeStarts_.push_back(0);
  afterStarts_.push_back(0);
  for (std::uint32_t block = 0; block < Blocks(); ++block) {
    for (const std::uint32_t place : body.Ins(order_[Begin(block)])) befores_.push_back(blocks_[positions_[place]]);
    for (const std::uint32_t place : body.Outs(order_[End(block) - 1])) afters_.push_back(blocks_[positions_[place]]);
    beforeStarts_.push_back(static_cast<std::uint32_t>(befores_.size()));
    afterStarts_.push_back(static_cast<std::uint32_t>(afters_.size()));
  }
  order_ = {};
}

std::size_t BlockBody::Bytes() const {
  const auto held = [](const std::vector<std::uint32_t>& numbers) { return numbers.capacity() * sizeof(numbers[0]); };
  return held(positions_) + held(blocks_) + held(starts_) + held(beforeStarts_) + held(befores_) + held(afterStarts_) +
         held(afters_);
}

std::size_t BlockBodies::Bytes() const {
  std::size_t bytes = made_.capacity() * sizeof(made_[0]);
  for (const auto& body : made_) bytes += body ? sizeof(BlockBody) + body->Bytes() : 0;
  return bytes;
}

}  // namespace qmrules::workbench::flow
