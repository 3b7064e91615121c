! fortran/orvel_fft.f90 - interfaces of the fast Fourier transforms
! The work vector CWORK may be real or complex.
module orvel_fft
  implicit none
  public

  interface
    subroutine fftri(n, wfr)
      integer, intent(in) :: n
      real, intent(inout) :: wfr(*)
    end subroutine fftri
    subroutine dfftri(n, wfr)
      integer, intent(in) :: n
      double precision, intent(inout) :: wfr(*)
    end subroutine dfftri
    subroutine fftrf(n, xseq, coef)
      integer, intent(in) :: n
      real, intent(in) :: xseq(*)
      real, intent(inout) :: coef(*)
    end subroutine fftrf
    subroutine dfftrf(n, xseq, coef)
      integer, intent(in) :: n
      double precision, intent(in) :: xseq(*)
      double precision, intent(inout) :: coef(*)
    end subroutine dfftrf
    subroutine fftrb(n, coef, xseq)
      integer, intent(in) :: n
      real, intent(in) :: coef(*)
      real, intent(inout) :: xseq(*)
    end subroutine fftrb
    subroutine dfftrb(n, coef, xseq)
      integer, intent(in) :: n
      double precision, intent(in) :: coef(*)
      double precision, intent(inout) :: xseq(*)
    end subroutine dfftrb
    subroutine f2trf(n, xseq, coef, wfr)
      integer, intent(in) :: n
      real, intent(in) :: xseq(*)
      real, intent(inout) :: coef(*)
      real, intent(inout) :: wfr(*)
    end subroutine f2trf
    subroutine df2trf(n, xseq, coef, wfr)
      integer, intent(in) :: n
      double precision, intent(in) :: xseq(*)
      double precision, intent(inout) :: coef(*)
      double precision, intent(inout) :: wfr(*)
    end subroutine df2trf
    subroutine f2trb(n, coef, xseq, wfr)
      integer, intent(in) :: n
      real, intent(in) :: coef(*)
      real, intent(inout) :: xseq(*)
      real, intent(inout) :: wfr(*)
    end subroutine f2trb
    subroutine df2trb(n, coef, xseq, wfr)
      integer, intent(in) :: n
      double precision, intent(in) :: coef(*)
      double precision, intent(inout) :: xseq(*)
      double precision, intent(inout) :: wfr(*)
    end subroutine df2trb
    subroutine f3trf(n, c, ch, wa, fac)
      integer, intent(in) :: n
      real, intent(inout) :: c(*)
      real, intent(inout) :: ch(*)
      real, intent(in) :: wa(*)
      real, intent(in) :: fac(15)
    end subroutine f3trf
    subroutine df3trf(n, c, ch, wa, fac)
      integer, intent(in) :: n
      double precision, intent(inout) :: c(*)
      double precision, intent(inout) :: ch(*)
      double precision, intent(in) :: wa(*)
      double precision, intent(in) :: fac(15)
    end subroutine df3trf
    subroutine fftci(n, wfc)
      integer, intent(in) :: n
      real, intent(inout) :: wfc(*)
    end subroutine fftci
    subroutine dfftci(n, wfc)
      integer, intent(in) :: n
      double precision, intent(inout) :: wfc(*)
    end subroutine dfftci
    subroutine fftcf(n, xseq, coef)
      integer, intent(in) :: n
      complex, intent(in) :: xseq(*)
      complex, intent(inout) :: coef(*)
    end subroutine fftcf
    subroutine dfftcf(n, xseq, coef)
      integer, intent(in) :: n
      complex(kind(1d0)), intent(in) :: xseq(*)
      complex(kind(1d0)), intent(inout) :: coef(*)
    end subroutine dfftcf
    subroutine fftcb(n, coef, xseq)
      integer, intent(in) :: n
      complex, intent(in) :: coef(*)
      complex, intent(inout) :: xseq(*)
    end subroutine fftcb
    subroutine dfftcb(n, coef, xseq)
      integer, intent(in) :: n
      complex(kind(1d0)), intent(in) :: coef(*)
      complex(kind(1d0)), intent(inout) :: xseq(*)
    end subroutine dfftcb
    subroutine f2tcf(n, xseq, coef, wfc, cwork)
      integer, intent(in) :: n
      complex, intent(in) :: xseq(*)
      complex, intent(inout) :: coef(*)
      real, intent(inout) :: wfc(*)
      type(*) :: cwork(*)
    end subroutine f2tcf
    subroutine df2tcf(n, xseq, coef, wfc, cwork)
      integer, intent(in) :: n
      complex(kind(1d0)), intent(in) :: xseq(*)
      complex(kind(1d0)), intent(inout) :: coef(*)
      double precision, intent(inout) :: wfc(*)
      type(*) :: cwork(*)
    end subroutine df2tcf
    subroutine f2tcb(n, coef, xseq, wfc, cwork)
      integer, intent(in) :: n
      complex, intent(in) :: coef(*)
      complex, intent(inout) :: xseq(*)
      real, intent(inout) :: wfc(*)
      type(*) :: cwork(*)
    end subroutine f2tcb
    subroutine df2tcb(n, coef, xseq, wfc, cwork)
      integer, intent(in) :: n
      complex(kind(1d0)), intent(in) :: coef(*)
      complex(kind(1d0)), intent(inout) :: xseq(*)
      double precision, intent(inout) :: wfc(*)
      type(*) :: cwork(*)
    end subroutine df2tcb
  end interface
end module orvel_fft
