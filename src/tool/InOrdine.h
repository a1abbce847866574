#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <exception>
#include <future>
#include <thread>
#include <type_traits>
#include <vector>

namespace sonnel {

/// Does `lavora(i)` for i from 0 to `quanti` - 1 on as many threads as there are processors, and
/// hands each result to `consegna(i, risultato)` on the calling thread, in order. An exception of
/// `lavora` is thrown in place of its result.
template <class Lavora, class Consegna>
void InOrdine(std::size_t quanti, const Lavora& lavora, const Consegna& consegna) {
    using Risultato = std::invoke_result_t<const Lavora&, std::size_t>;
    std::vector<std::promise<Risultato>> promesse(quanti);
    std::atomic<std::size_t> prossimo{0};
    const auto operaio = [&](const std::stop_token& basta) {
        for (std::size_t i = prossimo++; i < quanti && !basta.stop_requested(); i = prossimo++) {
            try {
                promesse[i].set_value(lavora(i));
            } catch (...) {
                promesse[i].set_exception(std::current_exception());
            }
        }
    };
    std::vector<std::jthread> operai;
    const std::size_t processori = std::max(1U, std::thread::hardware_concurrency());
    for (std::size_t i = 0; i < std::min(processori, quanti); ++i) {
        operai.emplace_back(operaio);
    }
    for (std::size_t i = 0; i < quanti; ++i) {
        consegna(i, promesse[i].get_future().get());
    }
}

}  // namespace sonnel
