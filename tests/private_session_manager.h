#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QTest>
#include <array>
#include <functional>
#include <utility>
#include <vector>

// What they define as macros must not reach the toolkit's headers.
#include <X11/ICE/ICElib.h>
#include <X11/SM/SMlib.h>
#include <poll.h>

namespace veldra::test {

/// A session manager as desktops with X have one, for one program that the test starts. Needs no
/// rights. There is one at a time in a process.
class PrivateSessionManager {
 public:
    PrivateSessionManager() {
        ::IceSetIOErrorHandler([](::IceConn) {});  // a program that is gone ends no test
        std::array<char, 256> reason{};
        const auto size = static_cast<int>(reason.size());
        if (::SmsInitialize("VELDRA", "1", &accept_client, this, &accept_host, size,
                            reason.data()) == 0 ||
            ::IceListenForConnections(&count_, &listening_, size, reason.data()) == 0) {
            trouble_ = reason.data();
            return;
        }
        for (int i = 0; i < count_; ++i) {
            ::IceSetHostBasedAuthProc(listening_[i], &accept_host);
        }
    }
    ~PrivateSessionManager() {
        hang_up();
        if (listening_ != nullptr) {
            ::IceFreeListenObjs(count_, listening_);
        }
    }
    PrivateSessionManager(const PrivateSessionManager&) = delete;
    PrivateSessionManager& operator=(const PrivateSessionManager&) = delete;

    /// "" if it runs, else why it does not.
    [[nodiscard]] const QByteArray& trouble() const { return trouble_; }

    /// What programs find in SESSION_MANAGER.
    [[nodiscard]] QByteArray address() const {
        char* const list = ::IceComposeNetworkIdList(count_, listening_);
        QByteArray text(list);
        std::free(list);
        return text;
    }

    /// The session ends: the program is to save what it has.
    void log_out() { ::SmsSaveYourself(program_, SmSaveGlobal, True, SmInteractStyleAny, False); }
    void go_on_with_phase_2() { ::SmsSaveYourselfPhase2(program_); }
    void let_die() { ::SmsDie(program_); }

    /// How often the program has answered that it has saved itself. It does so once of its own
    /// accord, as soon as it serves events for the first time.
    int times_saved = 0;
    /// How often it has asked to be called again when the other programs are through.
    int times_put_off = 0;
    /// Called at each answer.
    std::function<void()> at_answer;

    /// Serves the program until `done` holds; false if that takes too long.
    [[nodiscard]] bool serve_until(const std::function<bool()>& done) {
        constexpr int too_long = 20000;
        QElapsedTimer timer;
        timer.start();
        while (!done()) {
            if (timer.elapsed() > too_long) {
                return false;
            }
            serve();
            QTest::qWait(5);
        }
        return true;
    }

 private:
    static PrivateSessionManager& self(SmPointer data) {
        return *static_cast<PrivateSessionManager*>(data);
    }
    static Bool accept_host(char* /*host*/) { return True; }

    static Status accept_client(SmsConn program, SmPointer data, unsigned long* mask,
                                SmsCallbacks* calls, char** /*reason*/) {
        self(data).program_ = program;
        *mask = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask |
                SmsSaveYourselfRequestProcMask | SmsSaveYourselfP2RequestProcMask |
                SmsSaveYourselfDoneProcMask | SmsCloseConnectionProcMask |
                SmsSetPropertiesProcMask | SmsDeletePropertiesProcMask | SmsGetPropertiesProcMask;
        calls->register_client = {&register_client, data};
        calls->interact_request = {[](SmsConn, SmPointer, int) {}, data};
        calls->interact_done = {[](SmsConn, SmPointer, Bool) {}, data};
        calls->save_yourself_request = {[](SmsConn, SmPointer, int, Bool, int, Bool, Bool) {},
                                        data};
        calls->save_yourself_phase2_request = {
            [](SmsConn, SmPointer to) { self(to).answered(self(to).times_put_off); }, data};
        calls->save_yourself_done = {
            [](SmsConn, SmPointer to, Bool) { self(to).answered(self(to).times_saved); }, data};
        calls->close_connection = {&close_connection, data};
        calls->set_properties = {&free_properties, data};
        calls->delete_properties = {[](SmsConn, SmPointer, int count, char** names) {
                                        for (int i = 0; i < count; ++i) {
                                            std::free(names[i]);
                                        }
                                        std::free(names);
                                    },
                                    data};
        calls->get_properties = {[](SmsConn, SmPointer) {}, data};
        return 1;
    }

    /// A new program is asked to save its state for the first time at once.
    static Status register_client(SmsConn program, SmPointer /*data*/, char* previous_id) {
        std::free(previous_id);
        char* const id = ::SmsGenerateClientID(program);
        ::SmsRegisterClientReply(program, id);
        std::free(id);
        ::SmsSaveYourself(program, SmSaveLocal, False, SmInteractStyleNone, False);
        return 1;
    }

    static void close_connection(SmsConn /*program*/, SmPointer data, int count, char** reasons) {
        ::SmFreeReasons(count, reasons);
        self(data).hang_up();
    }

    /// Ends the connection, which frees it only if the protocol on it has been ended first.
    void hang_up() {
        if (program_ != nullptr) {
            ::SmsCleanUp(std::exchange(program_, nullptr));
        }
        if (ice_ != nullptr) {
            ::IceSetShutdownNegotiation(ice_, False);
            ::IceCloseConnection(std::exchange(ice_, nullptr));
        }
    }

    static void free_properties(SmsConn /*program*/, SmPointer /*data*/, int count,
                                SmProp** properties) {
        for (int i = 0; i < count; ++i) {
            ::SmFreeProperty(properties[i]);
        }
        std::free(properties);
    }

    void answered(int& times) {
        ++times;
        if (at_answer) {
            at_answer();
        }
    }

    static bool is_readable(int descriptor) {
        pollfd look{descriptor, POLLIN, 0};
        return ::poll(&look, 1, 0) > 0;
    }

    void serve() {
        for (int i = 0; i < count_ && ice_ == nullptr; ++i) {
            if (is_readable(::IceGetListenConnectionNumber(listening_[i]))) {
                ::IceAcceptStatus status = IceAcceptSuccess;
                ice_ = ::IceAcceptConnection(listening_[i], &status);
            }
        }
        while (ice_ != nullptr && is_readable(::IceConnectionNumber(ice_))) {
            if (::IceProcessMessages(ice_, nullptr, nullptr) == IceProcessMessagesIOError) {
                hang_up();
            }
        }
    }

    QByteArray trouble_;
    int count_ = 0;
    ::IceListenObj* listening_ = nullptr;
    ::IceConn ice_ = nullptr;
    SmsConn program_ = nullptr;
};

}  // namespace veldra::test

#undef Bool
#undef Status
#undef True
#undef False
